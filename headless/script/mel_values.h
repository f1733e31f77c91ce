#pragma once

#include "headless/script/mel_program.h"

namespace headless {

// Values of scripts are what commands give back; these are the operations of the language on them.

double mel_number(const CommandResult& value); ///< of a text what number it begins with; of a list the first
std::int64_t mel_integer(const CommandResult& value);
std::string mel_text(const CommandResult& value);
bool mel_truth(const CommandResult& value);
bool mel_is_list(const CommandResult& value);
bool mel_is_text(const CommandResult& value);
std::size_t mel_size(const CommandResult& value); ///< of a list its length, of a text its characters, else 1
/// The i-th value of a list; of what is no list, that value. Beyond the end, nothing.
CommandResult mel_element(const CommandResult& list, std::size_t i);
/// Texts stay texts; whole numbers give whole numbers; dividing by zero gives nothing.
std::optional<CommandResult> mel_binary(std::string_view op, const CommandResult& a, const CommandResult& b);
/// Values in one list, of texts if any is one.
CommandResult mel_list(const std::vector<CommandResult>& values);
/// The value as a variable of that type ("int", "string[]") holds it.
CommandResult mel_converted(CommandResult value, std::string_view type);

} // namespace headless
