#pragma once

#include "headless/files/text_file.h"
#include "headless/graph/scene.h"

namespace headless {

/// What lengths, angles and times are counted in where a file states them, and back again.
struct FileUnits {
    explicit FileUnits(const Scene& scene)
        : centimetres(scene.linear_unit.centimetres), radians(scene.angle_unit.radians),
          per_second(scene.time_unit.per_second) {}

    double to_file(AttributeKind kind, double value) const;
    double from_file(AttributeKind kind, double value) const; ///< the very operation that a reader does

    double centimetres, radians, per_second;
};

/// Elements in one statement; readers of lines don't like them endless.
inline constexpr std::size_t longest_run = 500;

/// Puts the words of statements into a file, line by line through one buffer.
class MaText {
public:
    MaText(OutputFile& out, const FileUnits& units) : out_(out), units_(units) {}

    MaText& text(std::string_view words);
    MaText& integer(std::int64_t value);
    /// As `spelled`. What isn't finite is noted.
    MaText& number(double value, AttributeKind kind = AttributeKind::number);
    /// In quotes and with escapes; a long one in pieces joined by "+", as readers of lines like it.
    MaText& quoted(std::string_view value);
    /// A blank before the next word, or a new line when this one is long.
    MaText& gap();
    void end_statement() { text(";\n"); }

    /// A value in the file's unit, with the fewest digits that read back to the same.
    std::string spelled(double value, AttributeKind kind) const;
    bool met_no_number() const { return no_number_; } ///< an infinity or a NaN came by
    void flush();

private:
    void escaped(std::string_view value);

    OutputFile& out_;
    FileUnits units_;
    std::string buffer_;
    std::size_t line_start_ = 0;
    bool no_number_ = false;
};

} // namespace headless
