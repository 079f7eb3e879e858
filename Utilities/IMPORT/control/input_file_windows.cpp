#include "control/input_file.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>

#include <windows.h>

namespace kova_import {

namespace {

/// Room for the path in a host's field behind the current directory.
using WidePath = std::array<wchar_t, 1024>;

const char *reason_of(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_PATHNAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        return "there is no such file";
    case ERROR_ACCESS_DENIED:
        return "the file may not be read";
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return "another program keeps the file to itself";
    case ERROR_FILENAME_EXCED_RANGE:
        return "the path is too long";
    case ERROR_TOO_MANY_OPEN_FILES:
        return "too many files are open";
    default:
        return "the system cannot open the file";
    }
}

// Hosts of today hand on UTF-8, older ones what the system's narrow functions gave them. Text in a
// code page with accents is hardly ever valid UTF-8.
bool widen(std::string_view path, WidePath &wide) {
    for (const UINT code_page : {UINT{CP_UTF8}, UINT{CP_ACP}}) {
        const int size = ::MultiByteToWideChar(code_page, MB_ERR_INVALID_CHARS, path.data(),
                                               static_cast<int>(path.size()), wide.data(),
                                               static_cast<int>(wide.size() - 1));
        if (size > 0) {
            wide[static_cast<std::size_t>(size)] = L'\0';
            return true;
        }
    }
    return false;
}

// A path of 260 characters and more is found only when it is whole and marked as such, in programs
// that have not asked for such paths.
bool mark_if_long(WidePath &path) {
    constexpr std::wstring_view mark = L"\\\\?\\";
    constexpr std::wstring_view share_mark = L"\\\\?\\UNC";
    constexpr std::wstring_view share = L"\\\\";
    WidePath whole;
    const DWORD size =
        ::GetFullPathNameW(path.data(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
    if (size >= whole.size())
        return false;
    if (size < MAX_PATH)
        return true;
    std::wstring_view rest(whole.data(), size);
    if (rest.starts_with(mark) || rest.starts_with(L"\\\\.\\"))
        return true;
    const bool on_share = rest.starts_with(share);
    rest.remove_prefix(on_share ? share.size() - 1 : 0);
    const std::wstring_view start = on_share ? share_mark : mark;
    if (start.size() + rest.size() >= path.size())
        return false;
    *std::copy(rest.begin(), rest.end(), std::copy(start.begin(), start.end(), path.begin())) =
        L'\0';
    return true;
}

bool is_folder(const WidePath &path) {
    const DWORD attributes = ::GetFileAttributesW(path.data());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool is_regular(HANDLE handle) {
    BY_HANDLE_FILE_INFORMATION information;
    return ::GetFileType(handle) == FILE_TYPE_DISK &&
           ::GetFileInformationByHandle(handle, &information) != 0 &&
           (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

HANDLE handle_of(std::intptr_t number) {
    return reinterpret_cast<HANDLE>(number); // NOLINT(performance-no-int-to-ptr)
}

} // namespace

const char *InputFile::open(std::string_view path) {
    // The width of the host's field.
    constexpr std::size_t longest_path = 512;
    if (path.empty())
        return "no file was named";
    if (path.size() > longest_path)
        return "the path is too long";
    WidePath wide;
    if (!widen(path, wide))
        return "the path has characters that the system does not know";
    if (!mark_if_long(wide))
        return "the path is too long";

    close();
    // Other programs may go on to read, write, rename or delete the file.
    const HANDLE handle = ::CreateFileW(wide.data(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        const DWORD error = ::GetLastError();
        return is_folder(wide) ? "it is a folder" : reason_of(error);
    }
    if (!is_regular(handle)) {
        ::CloseHandle(handle);
        return "it is not a regular file";
    }
    handle_ = reinterpret_cast<std::intptr_t>(handle);
    return nullptr;
}

void InputFile::close() {
    if (is_open())
        ::CloseHandle(handle_of(handle_));
    handle_ = closed;
}

std::optional<std::size_t> InputFile::read(char *target, std::size_t size) {
    constexpr std::size_t most = std::numeric_limits<DWORD>::max();
    DWORD count = 0;
    if (::ReadFile(handle_of(handle_), target, static_cast<DWORD>(std::min(size, most)), &count,
                   nullptr) == 0)
        return std::nullopt;
    return count;
}

bool InputFile::seek(std::int64_t offset) {
    LARGE_INTEGER distance;
    distance.QuadPart = offset;
    return ::SetFilePointerEx(handle_of(handle_), distance, nullptr, FILE_BEGIN) != 0;
}

} // namespace kova_import
