// MStatus and MString.
#include "headless/api/access.h"
#include "headless/graph/number_text.h"
#include "support/text/ascii.h"
#include "support/text/unicode.h"

#include <maya/MStringArray.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <limits>

MString MStatus::errorString() const {
    switch (code_) {
    case kSuccess:
        return "Success";
    case kFailure:
        return "(kFailure): Unexpected Internal Failure";
    case kInsufficientMemory:
        return "(kInsufficientMemory): Insufficient memory to complete the operation";
    case kInvalidParameter:
        return "(kInvalidParameter): Object is incompatible with this method";
    case kLicenseFailure:
        return "(kLicenseFailure): Application is not licensed for the attempted operation";
    case kUnknownParameter:
        return "(kUnknownParameter): Unknown parameter";
    case kNotImplemented:
        return "(kNotImplemented): Operation is not available";
    case kNotFound:
        return "(kNotFound): Item not found";
    case kEndOfFile:
        return "(kEndOfFile): End of file";
    }
    return "(kFailure): Unknown status";
}

void MStatus::perror(const char* message) const {
    (void)std::fprintf(stderr, "%s: %s\n", message ? message : "", errorString().asChar());
}

void MStatus::perror(const MString& message) const {
    perror(message.asChar());
}

ostream& operator<<(ostream& out, MStatus& status) {
    return out << status.errorString();
}

namespace {

template<typename T>
std::string shortest(T value) {
    char buffer[64];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value);
    return error == std::errc() ? std::string(buffer, end) : std::string();
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

// Whether the whole of the text is one number of that kind.
template<typename T>
bool is_all(const std::string& whole) {
    const std::string_view text = headless::without_plus(trimmed(whole));
    T value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return !text.empty() && error == std::errc() && end == text.data() + text.size();
}

template<typename T>
T clamped(double value) {
    if (!(value == value)) return 0;
    constexpr double lowest = std::numeric_limits<T>::lowest(), highest = std::numeric_limits<T>::max();
    return static_cast<T>(std::clamp(value, lowest, highest));
}

} // namespace

MString::MString(const char* text, int length) : text_(text && length > 0 ? std::string(text, length) : "") {}

MString::MString(const wchar_t* text) {
    if (!text) return;
    const std::wstring_view letters(text);
    if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
        text_ = VOR2_LOADER::to_utf8(std::u16string(letters.begin(), letters.end())); // some letters take two
    } else {
        for (const wchar_t letter : letters) VOR2_LOADER::append_utf8(text_, static_cast<char32_t>(letter));
    }
}

MString& MString::operator+=(const MString& other) {
    text_ += other.text_;
    return *this;
}
MString& MString::operator+=(const char* other) {
    if (other) text_ += other;
    return *this;
}
MString& MString::operator+=(double value) {
    text_ += shortest(value);
    return *this;
}
MString& MString::operator+=(float value) {
    text_ += shortest(value);
    return *this;
}
MString& MString::operator+=(int value) {
    text_ += std::to_string(value);
    return *this;
}
MString& MString::operator+=(unsigned int value) {
    text_ += std::to_string(value);
    return *this;
}

const char* MString::asChar(int& length) const {
    length = static_cast<int>(text_.size());
    return text_.c_str();
}

unsigned int MString::numChars() const {
    return static_cast<unsigned int>(std::ranges::count_if(text_, [](char c) { return (c & 0xC0) != 0x80; }));
}

bool MString::isShort() const {
    return is_all<short>(text_);
}
bool MString::isInt() const {
    return is_all<int>(text_);
}
bool MString::isUnsigned() const {
    return is_all<unsigned int>(text_);
}
bool MString::isDouble() const {
    return is_all<double>(text_);
}

double MString::asDouble() const {
    const std::string_view text = headless::without_plus(trimmed(text_));
    double value = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}
float MString::asFloat() const {
    return static_cast<float>(asDouble());
}
int MString::asInt() const {
    return clamped<int>(asDouble());
}
unsigned int MString::asUnsigned() const {
    return clamped<unsigned int>(asDouble());
}
short MString::asShort() const {
    return clamped<short>(asDouble());
}

int MString::index(char c) const {
    const std::size_t at = text_.find(c);
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

int MString::rindex(char c) const {
    const std::size_t at = text_.rfind(c);
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

MString& MString::toUpperCase() {
    for (char& c : text_) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return *this;
}

MString& MString::toLowerCase() {
    for (char& c : text_) c = VOR2_LOADER::lower(c);
    return *this;
}

MStatus MString::split(char separator, MStringArray& pieces) const {
    pieces.clear();
    for (std::size_t begin = 0; begin <= text_.size();) {
        const std::size_t end = std::min(text_.find(separator, begin), text_.size());
        if (end > begin) pieces.append(headless::text(text_.substr(begin, end - begin)));
        begin = end + 1;
    }
    return MStatus::kSuccess;
}

MString MString::substring(int first, int last) const {
    first = std::max(first, 0);
    last = std::min(last, static_cast<int>(text_.size()) - 1);
    if (first > last) return {};
    return headless::text(text_.substr(first, last - first + 1));
}

MStatus MString::set(const char* text) {
    text_ = text ? text : "";
    return MStatus::kSuccess;
}

MStatus MString::set(double value) {
    text_ = shortest(value);
    return MStatus::kSuccess;
}

MStatus MString::set(double value, int precision) {
    char buffer[512];
    (void)std::snprintf(buffer, sizeof buffer, "%.*f", std::clamp(precision, 0, 100), value);
    text_ = buffer;
    return MStatus::kSuccess;
}

ostream& operator<<(ostream& out, const MString& text) {
    return out << text.asChar();
}
