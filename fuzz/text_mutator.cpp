// Whole statements or lines are dropped, doubled and swapped, others put in, and numbers become telling ones.

#include "fuzz/text_mutator.h"

#include "support/types.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(VOR2_LOADER::u8* data, std::size_t size, std::size_t max_size);

namespace {

using namespace VOR2_LOADER;

/// Pieces that each end in a line end, a semicolon or the text's end.
std::vector<std::string> split(std::string_view text) {
    std::vector<std::string> pieces;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\n;\f"), text.size() - 1) + 1;
        pieces.emplace_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return pieces;
}

void change_number(std::string& piece, std::minstd_rand& random) {
    constexpr std::string_view DIGITS = "0123456789.";
    constexpr std::array NUMBERS{"0",  "1",  "-1",    "2",    "3",          "0.5",  "1e30", "-1e-30",
                                 "16", "99", "65536", "1e18", "2147483647", "-0.0", "nan",  "1e308"};
    const std::size_t start = piece.find_first_of(DIGITS, random() % (piece.size() + 1));
    if (start == piece.npos) return;
    const std::size_t end = std::min(piece.find_first_not_of(DIGITS, start), piece.size());
    piece.replace(start, end - start, NUMBERS[random() % NUMBERS.size()]);
}

void change(std::vector<std::string>& pieces, std::minstd_rand& random) {
    const std::size_t at = random() % pieces.size();
    const std::size_t other = random() % pieces.size();
    const auto place = [&pieces](std::size_t index) { return pieces.begin() + static_cast<std::ptrdiff_t>(index); };
    switch (random() % (fuzz::make_piece ? 8 : 5)) {
    case 0:
        pieces.erase(place(at));
        break;
    case 1:
        pieces.insert(place(other), std::string(pieces[at]));
        break;
    case 2:
        std::swap(pieces[at], pieces[other]);
        break;
    case 5:
    case 6:
    case 7:
        pieces.insert(place(at), fuzz::make_piece(random));
        break;
    default:
        change_number(pieces[at], random);
    }
}

} // namespace

fuzz::PieceMaker fuzz::make_piece = nullptr;

extern "C" std::size_t LLVMFuzzerCustomMutator(u8* data, std::size_t size, std::size_t max_size, unsigned seed) {
    std::minstd_rand random(seed);
    std::vector<std::string> pieces = split({reinterpret_cast<const char*>(data), size});
    if (pieces.empty() || random() % 3 != 0) return LLVMFuzzerMutate(data, size, max_size);
    change(pieces, random);
    std::string text;
    for (const std::string& piece : pieces) text += piece;
    const std::size_t length = std::min(text.size(), max_size);
    std::memcpy(data, text.data(), length);
    return length;
}
