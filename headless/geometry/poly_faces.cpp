#include "headless/geometry/poly_faces.h"

#include <charconv>
#include <optional>

namespace headless {
namespace {

struct PartWord {
    std::string_view word;
    FacePart part;
    bool has_set;
};
constexpr PartWord part_words[] = {
    {"f", FacePart::outline, false},        {"h", FacePart::hole, false},       {"mu", FacePart::uvs, true},
    {"mc", FacePart::colours, true},        {"mf", FacePart::plain_uvs, false}, {"mh", FacePart::plain_hole_uvs, false},
    {"fc", FacePart::plain_colours, false},
};

std::optional<std::int32_t> integer(const std::string& word) {
    std::int32_t out = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), out);
    if (error != std::errc() || end != word.data() + word.size()) return {};
    return out;
}

class Encoder {
public:
    Encoder(const std::vector<std::string>& words, std::vector<std::int32_t>& out) : words_(words), out_(out) {}

    bool all() {
        while (at_ < words_.size()) {
            if (!part()) return false;
        }
        return true;
    }

private:
    bool part() {
        const PartWord* kind = nullptr;
        for (const PartWord& candidate : part_words) {
            if (candidate.word == words_[at_]) kind = &candidate;
        }
        if (!kind) return false;
        ++at_;
        out_.push_back(static_cast<std::int32_t>(kind->part));
        out_.push_back(0);
        if (kind->has_set && !number(out_.back())) return false;
        std::int32_t count = 0;
        if (!number(count) || count < 0 || static_cast<std::size_t>(count) > words_.size() - at_) return false;
        out_.push_back(count);
        for (std::int32_t i = 0; i < count; ++i) {
            out_.push_back(0);
            if (!number(out_.back())) return false;
        }
        return true;
    }

    bool number(std::int32_t& out) {
        if (at_ == words_.size()) return false;
        const auto found = integer(words_[at_++]);
        if (found) out = *found;
        return found.has_value();
    }

    const std::vector<std::string>& words_;
    std::vector<std::int32_t>& out_;
    std::size_t at_ = 0;
};

} // namespace

bool encode_face(const RawTokens& words, std::vector<std::int32_t>& out) {
    const std::size_t before = out.size();
    if (Encoder(words.tokens, out).all()) return true;
    out.resize(before);
    return false;
}

RawTokens decode_face(std::span<const std::int32_t> numbers) {
    RawTokens out{"polyFaces", {}};
    each_part(numbers, [&](FacePart part, std::int32_t set, std::span<const std::int32_t> values) {
        const PartWord& kind = part_words[static_cast<std::size_t>(part)];
        out.tokens.emplace_back(kind.word);
        if (kind.has_set) out.tokens.push_back(std::to_string(set));
        out.tokens.push_back(std::to_string(values.size()));
        for (const std::int32_t value : values) out.tokens.push_back(std::to_string(value));
    });
    return out;
}

} // namespace headless
