#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <string>

class MStringArray;

/// A text of 8-bit characters.
class MString {
public:
    MString() = default;
    MString(const char* text) : text_(text ? text : "") {}
    MString(const char* text, int length);
    MString(const wchar_t* text);

    MString& operator+=(const MString& other);
    MString& operator+=(const char* other);
    MString& operator+=(double value);
    MString& operator+=(int value);
    MString& operator+=(unsigned int value);
    MString& operator+=(float value);
    MString operator+(const MString& other) const { return MString(*this) += other; }
    MString operator+(const char* other) const { return MString(*this) += other; }
    MString operator+(double value) const { return MString(*this) += value; }
    bool operator==(const MString& other) const { return text_ == other.text_; }
    bool operator==(const char* other) const { return text_ == (other ? other : ""); }
    bool operator!=(const MString& other) const { return !(*this == other); }
    bool operator!=(const char* other) const { return !(*this == other); }

    const char* asChar() const { return text_.c_str(); }
    const char* asChar(int& length) const;
    const char* asUTF8() const { return text_.c_str(); }
    unsigned int length() const { return static_cast<unsigned int>(text_.size()); }
    unsigned int numChars() const;

    bool isShort() const;
    bool isInt() const;
    bool isUnsigned() const;
    bool isFloat() const { return isDouble(); }
    bool isDouble() const;
    /// The number at the front of the text; 0 when there is none.
    short asShort() const;
    int asInt() const;
    unsigned int asUnsigned() const;
    float asFloat() const;
    double asDouble() const;

    int index(char c) const;  ///< of its first occurrence; -1 when there is none
    int rindex(char c) const; ///< of its last
    MString& toUpperCase();
    MString& toLowerCase();
    MStatus split(char separator, MStringArray& pieces) const; ///< without the empty pieces
    /// From `first` to `last`, both included, each held within the text.
    MString substring(int first, int last) const;
    MStatus set(const char* text);
    MStatus set(double value);
    MStatus set(double value, int precision);
    MStatus setUTF8(const char* text) { return set(text); }
    void clear() { text_.clear(); }

    friend MString operator+(const char* left, const MString& right) { return MString(left) += right; }
    friend ostream& operator<<(ostream& out, const MString& text);

private:
    friend struct headless::Access;
    std::string text_;
};
