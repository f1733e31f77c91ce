#include "headless/files/ma_notes.h"

#include "headless/session.h"

namespace headless {

void MaNotes::tell() const {
    if (passed_over_ == 0) return;
    const std::int64_t others = passed_over_ - 1;
    const std::string more = others == 0 ? "" : " (and " + std::to_string(others) + " more passed over)";
    Session::current().warning(first_.text() + more);
}

} // namespace headless
