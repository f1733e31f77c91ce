#include "support/platform/hooks.h"
#include "support/platform/native_path.h"
#include "support/platform/platform.h"
#include "support/platform/thread_pointer.h"
#include "support/platform/windows_headers.h"
#include "support/text/unicode.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>

#include <fcntl.h>
#include <io.h>
#include <malloc.h>
#include <process.h>

namespace VOR2_LOADER::platform {

namespace {

bool anything_at(const std::wstring& name) {
    return GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES;
}

/// An 8-bit name in the process's character set, at 16 bits; empty when it has no such form.
std::wstring widened(const std::string& name) {
    const int size = static_cast<int>(name.size());
    std::wstring wide(name.size(), L'\0');
    const int used = MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, name.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(std::max(used, 0)));
    return wide;
}

/// The name under which a file is found: with UTF-8 the one that it is written under; otherwise the 16-bit name as it
/// stands or, where nothing stands there, what the host named with 8 bits if that leads to something.
std::wstring name_to_find(std::u16string_view name) {
    std::wstring wide(name.begin(), name.end());
    const bool ascii = std::all_of(name.begin(), name.end(), [](char16_t unit) { return unit <= 0x7F; });
    if (ascii || (GetACP() != CP_UTF8 && anything_at(wide))) return wide;
    std::wstring other = widened(native_file_name(name));
    return !other.empty() && (GetACP() == CP_UTF8 || anything_at(other)) ? other : wide;
}

/// Which file a name leads to: the volume's serial number and the file's index on it.
struct FILE_IDENTITY {
    DWORD volume, index_high, index_low;
    friend bool operator==(const FILE_IDENTITY&, const FILE_IDENTITY&) = default;
};

std::optional<FILE_IDENTITY> identity_of(std::u16string_view name) {
    const DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileW(name_to_find(name).c_str(), 0, sharing, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    BY_HANDLE_FILE_INFORMATION facts{};
    const bool known = GetFileInformationByHandle(file, &facts) != 0;
    CloseHandle(file);
    if (!known) return {};
    return FILE_IDENTITY{facts.dwVolumeSerialNumber, facts.nFileIndexHigh, facts.nFileIndexLow};
}

/// One word of a command line, as a program's start-up code takes it apart again.
std::string quoted(std::string_view word) {
    std::string line = "\"";
    std::size_t backslashes = 0;
    for (const char c : word) {
        if (c == '"') line.append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        line.push_back(c);
    }
    return line.append(backslashes, '\\') + "\"";
}

/// A service or a build farm's session has no desktop that anyone sees; a box there would wait for ever.
bool anyone_can_see_a_box() {
    USEROBJECTFLAGS flags{};
    const HWINSTA station = GetProcessWindowStation();
    return station != nullptr && GetUserObjectInformationA(station, UOI_FLAGS, &flags, sizeof flags, nullptr) != 0 &&
           (flags.dwFlags & WSF_VISIBLE) != 0;
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
    if (GetACP() == CP_UTF8) return to_readable_utf8(name);
    std::string narrow;
    for (const char16_t unit : name.substr(0, MAX_PATH)) narrow.push_back(static_cast<char>(unit & 0xFF));
    return narrow;
}

std::FILE* open_for_reading(std::u16string_view name, i32& error) {
    const std::wstring wide = name_to_find(name);
    const DWORD attributes = GetFileAttributesW(wide.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        error = EISDIR;
        return nullptr;
    }
    std::FILE* stream = _wfopen(wide.c_str(), L"rbS");
    if (stream == nullptr) {
        error = errno;
        return nullptr;
    }
    if (GetFileType(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)))) != FILE_TYPE_DISK) { // NOLINT
        std::fclose(stream);
        error = EINVAL;
        return nullptr;
    }
    error = 0;
    return stream;
}

std::FILE* open_for_writing(std::u16string_view name, bool append, i32& error) {
    std::string narrow = native_file_name(name);
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
    return GetFileAttributesA(native_file_name(name).c_str()) != INVALID_FILE_ATTRIBUTES ||
           anything_at(name_to_find(name));
}

bool same_file(std::u16string_view a, std::u16string_view b) {
    const std::optional<FILE_IDENTITY> identity = identity_of(a);
    return identity && identity == identity_of(b);
}

bool create_directory(std::u16string_view name) {
    const std::string narrow = native_file_name(name);
    if (output_redirection != nullptr && !output_redirection->may_create_directory(narrow)) return false;
    if (CreateDirectoryA(narrow.c_str(), nullptr) != 0) return true;
    const DWORD attributes = GetFileAttributesA(narrow.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void make_writable(std::u16string_view name) {
    const std::string narrow = native_file_name(name);
    // A hidden file couldn't be replaced either, so every mark goes.
    if (GetFileAttributesA(narrow.c_str()) != INVALID_FILE_ATTRIBUTES) {
        SetFileAttributesA(narrow.c_str(), FILE_ATTRIBUTE_NORMAL);
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
        if (fixed_account_name->empty() || fixed_account_name->size() >= capacity) return {};
        return fixed_account_name;
    }
    std::string name(capacity, '\0');
    DWORD size = static_cast<DWORD>(capacity);
    if (GetUserNameA(name.data(), &size) == 0 || name[0] == '\0') return {};
    return std::string(name.c_str());
}

ANSWER ask_yes_no(void* owner, const char* words, const char* caption) {
    if (ask_yes_no_hook != nullptr) return ask_yes_no_hook(words, caption);
    if (!anyone_can_see_a_box()) return ANSWER::YES;
    // A box that can't be shown counts as Yes, too.
    return MessageBoxA(static_cast<HWND>(owner), words, caption, MB_YESNO) == IDNO ? ANSWER::NO : ANSWER::YES;
}

void start_program(const char* program, const char* argument) {
    const intptr_t child = _spawnlp(_P_NOWAIT, program, quoted(program).c_str(), quoted(argument).c_str(),
                                    static_cast<const char*>(nullptr));
    if (child != -1) CloseHandle(reinterpret_cast<HANDLE>(child)); // NOLINT(performance-no-int-to-ptr)
}

int flush_to_disk(const std::string& name) {
    // A folder can't be opened this way, and needs no call of its own to keep its entries.
    const DWORD attributes = GetFileAttributesA(name.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return 0;
    const int file = _open(name.c_str(), _O_RDWR | _O_BINARY | _O_NOINHERIT);
    if (file < 0) return errno;
    const int error = _commit(file) == 0 ? 0 : errno;
    _close(file);
    return error;
}

THREAD_POINTER::THREAD_POINTER(DESTROY destroy) noexcept
    : my_key(FlsAlloc(destroy)), my_destroy(destroy), my_key_is_made(my_key != FLS_OUT_OF_INDEXES) {}

THREAD_POINTER::~THREAD_POINTER() {
    if (my_key_is_made) FlsFree(my_key); // with the objects of all threads
}

void* THREAD_POINTER::get() const noexcept {
    return my_key_is_made ? FlsGetValue(my_key) : nullptr;
}

bool THREAD_POINTER::set(void* object) noexcept {
    return my_key_is_made && FlsSetValue(my_key, object) != 0;
}

} // namespace VOR2_LOADER::platform
