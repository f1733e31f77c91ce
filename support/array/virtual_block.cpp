#include "support/array/virtual_block.h"

#include "support/platform/platform.h"

namespace VOR2_LOADER {

void VIRTUAL_BLOCK::allocate(u32 size) {
    release();
    const u32 whole = rounded(size);
    if (whole == 0) return;
    my_address = static_cast<u8*>(platform::allocate_pages(whole));
    my_size = my_address != nullptr ? whole : 0;
}

void VIRTUAL_BLOCK::release() noexcept {
    if (my_address != nullptr) platform::free_pages(my_address, my_size);
    my_address = nullptr;
    my_size = 0;
}

} // namespace VOR2_LOADER
