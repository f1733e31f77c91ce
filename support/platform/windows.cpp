#include "support/platform/hooks.h"
#include "support/platform/platform.h"

#include <algorithm>
#include <cerrno>
#include <malloc.h>
#include <process.h>

#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

namespace VOR2_LOADER::platform {

namespace {

/// The 8-bit calls take the low byte of each unit, at most `MAX_PATH` of them.
std::string narrow_file_name(std::u16string_view name) {
    std::string narrow;
    for (const char16_t unit : name.substr(0, std::min<std::size_t>(name.size(), MAX_PATH))) {
        narrow.push_back(static_cast<char>(unit & 0xFF));
    }
    return narrow;
}

/// Which file a name leads to: the volume's serial number and the file's index on it.
struct FILE_IDENTITY {
    DWORD volume, index_high, index_low;
    friend bool operator==(const FILE_IDENTITY&, const FILE_IDENTITY&) = default;
};

std::optional<FILE_IDENTITY> identity_of(std::u16string_view name) {
    const std::wstring wide(name.begin(), name.end());
    const DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileW(wide.c_str(), 0, sharing, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    BY_HANDLE_FILE_INFORMATION facts{};
    const bool known = GetFileInformationByHandle(file, &facts) != 0;
    CloseHandle(file);
    if (!known) return {};
    return FILE_IDENTITY{facts.dwVolumeSerialNumber, facts.nFileIndexHigh, facts.nFileIndexLow};
}

} // namespace

void* aligned_allocate(std::size_t size, std::size_t alignment) noexcept {
    return _aligned_malloc(size, alignment);
}

void aligned_free(void* block) noexcept {
    _aligned_free(block);
}

void* allocate_pages(std::size_t size) noexcept {
    return VirtualAlloc(nullptr, size, MEM_COMMIT | MEM_RESERVE | MEM_TOP_DOWN, PAGE_READWRITE);
}

void free_pages(void* pages, std::size_t /*size*/) noexcept {
    VirtualFree(pages, 0, MEM_RELEASE);
}

std::string native_file_name(std::u16string_view name) {
    return narrow_file_name(name);
}

std::FILE* open_for_reading(std::u16string_view name, i32& error) {
    const std::wstring wide(name.begin(), name.end());
    const DWORD attributes = GetFileAttributesW(wide.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        error = EISDIR;
        return nullptr;
    }
    std::FILE* stream = _wfopen(wide.c_str(), L"rbS");
    error = stream != nullptr ? 0 : errno;
    return stream;
}

std::FILE* open_for_writing(std::u16string_view name, bool append, i32& error) {
    std::string narrow = narrow_file_name(name);
    if (output_redirection != nullptr) {
        std::optional<std::string> other = output_redirection->redirect(narrow);
        if (!other) {
            error = EACCES;
            return nullptr;
        }
        narrow = std::move(*other);
    }
    std::FILE* stream = std::fopen(narrow.c_str(), append ? "abS" : "wbS");
    error = stream != nullptr ? 0 : errno;
    return stream;
}

bool file_exists(std::u16string_view name) {
    return GetFileAttributesA(narrow_file_name(name).c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool same_file(std::u16string_view a, std::u16string_view b) {
    const std::optional<FILE_IDENTITY> identity = identity_of(a);
    return identity && identity == identity_of(b);
}

bool create_directory(std::u16string_view name) {
    const std::string narrow = narrow_file_name(name);
    if (output_redirection != nullptr && !output_redirection->may_create_directory(narrow)) return false;
    if (CreateDirectoryA(narrow.c_str(), nullptr) != 0) return true;
    const DWORD attributes = GetFileAttributesA(narrow.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void make_writable(std::u16string_view name) {
    const std::string narrow = narrow_file_name(name);
    const DWORD attributes = GetFileAttributesA(narrow.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        SetFileAttributesA(narrow.c_str(), attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    }
}

UTC_TIME utc_now() {
    if (fixed_time) return *fixed_time;
    SYSTEMTIME now{};
    GetSystemTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

std::optional<std::string> account_name(std::size_t capacity) {
    if (fixed_account_name) {
        if (fixed_account_name->size() >= capacity) return {};
        return fixed_account_name;
    }
    std::string name(capacity, '\0');
    DWORD size = static_cast<DWORD>(capacity);
    if (GetUserNameA(name.data(), &size) == 0) return {};
    return std::string(name.c_str());
}

ANSWER ask_yes_no(void* owner, const char* words, const char* caption) {
    if (ask_yes_no_hook != nullptr) return ask_yes_no_hook(words, caption);
    return MessageBoxA(static_cast<HWND>(owner), words, caption, MB_YESNO) == IDYES ? ANSWER::YES : ANSWER::NO;
}

void start_program(const char* program, const char* argument) {
    _spawnlp(_P_NOWAIT, program, program, argument, static_cast<const char*>(nullptr));
}

} // namespace VOR2_LOADER::platform
