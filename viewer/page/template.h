#pragma once

/// The page without its scenes, as the build made it of `viewer/page.html.in` and `viewer/src`.

#include <string_view>

namespace vor2::viewer {

extern const std::string_view page_head; ///< up to where the title stands
extern const std::string_view page_body; ///< from there to where the scenes stand
extern const std::string_view page_tail; ///< the rest, with the script

} // namespace vor2::viewer
