#include "cli/platform.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <io.h>
#include <stdexcept>

#include <windows.h>

#include <shellapi.h>

namespace kova_command::platform {

namespace {

constexpr int standard_output = 1;

/// Opens a stream that is missing, in the wrong direction on purpose.
void open_if_missing(std::FILE *stream, int number, const char *mode) {
    const int found = ::_fileno(stream);
    if (found >= 0 && ::_get_osfhandle(found) >= 0)
        return;
    if (std::freopen("NUL", mode, stream) != nullptr && ::_fileno(stream) != number)
        static_cast<void>(::_dup2(::_fileno(stream), number));
}

HANDLE handle_of(std::FILE *stream) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<HANDLE>(::_get_osfhandle(::_fileno(stream)));
}

std::string utf8_of(const wchar_t *text) {
    const int size = ::WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 1)
        return {};
    std::string result(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text, -1, result.data(), size, nullptr, nullptr);
    result.pop_back(); // the NUL
    return result;
}

/// The folder of this program.
std::filesystem::path own_folder() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD size =
            ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (size < path.size()) {
            path.resize(size);
            return std::filesystem::path(path).parent_path();
        }
        path.resize(2 * path.size());
    }
}

[[noreturn]] void fail_to_load(DWORD error) {
    std::array<wchar_t, 512> text{};
    const DWORD size = ::FormatMessageW(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
        nullptr, error, 0, text.data(), static_cast<DWORD>(text.size()), nullptr);
    throw std::runtime_error(size > 0 ? utf8_of(text.data())
                                      : "error " + std::to_string(error) + " of the loader");
}

} // namespace

// The C library has converted its own arguments to the active code page, which has no room for most
// letters.
std::vector<std::string> arguments_of(int /*argument_count*/, char ** /*arguments*/) {
    int count = 0;
    wchar_t **const wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::vector<std::string> result;
    for (int i = 1; i < count; ++i)
        result.push_back(utf8_of(wide[i]));
    ::LocalFree(wide);
    return result;
}

unsigned prepare_standard_streams() {
    open_if_missing(stdin, 0, "w");
    open_if_missing(stdout, 1, "r");
    open_if_missing(stderr, 2, "r");
    for (std::FILE *const stream : {stdout, stderr})
        static_cast<void>(::_setmode(::_fileno(stream), _O_BINARY));
    const unsigned before = ::GetConsoleOutputCP();
    if (before != 0)
        ::SetConsoleOutputCP(CP_UTF8);
    return before;
}

void give_console_back(unsigned before) {
    if (before != 0)
        ::SetConsoleOutputCP(before);
}

// The C library takes NUL and printers for terminals, too.
bool is_terminal(std::FILE *stream) {
    DWORD mode = 0;
    return ::GetConsoleMode(handle_of(stream), &mode) != 0;
}

std::optional<std::size_t> terminal_columns(std::FILE *stream) {
    CONSOLE_SCREEN_BUFFER_INFO screen;
    if (::GetConsoleScreenBufferInfo(handle_of(stream), &screen) == 0)
        return std::nullopt;
    const int columns = screen.srWindow.Right - screen.srWindow.Left + 1;
    return columns > 0 ? std::optional(static_cast<std::size_t>(columns)) : std::nullopt;
}

bool obeys_escapes(std::FILE *stream) {
    HANDLE const handle = handle_of(stream);
    DWORD mode = 0;
    return ::GetConsoleMode(handle, &mode) != 0 &&
           ::SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::FILE *open_for_writing(const std::string &path) {
    return ::_wfopen(path_of(path).c_str(), L"wbN");
}

// The C library's own temporary files lie in the root of the drive, where few may write.
std::FILE *open_temporary_file() {
    std::array<wchar_t, MAX_PATH + 1> folder{};
    std::array<wchar_t, MAX_PATH + 1> path{};
    if (::GetTempPathW(static_cast<DWORD>(folder.size()), folder.data()) == 0 ||
        ::GetTempFileNameW(folder.data(), L"kov", 0, path.data()) == 0) {
        errno = EACCES;
        return nullptr;
    }
    return ::_wfopen(path.data(), L"w+bTDN");
}

int take_standard_output(std::FILE *target) {
    const int saved = ::_dup(standard_output);
    if (saved < 0)
        return saved;
    const int sink =
        target != nullptr ? ::_fileno(target) : ::_wopen(L"NUL", _O_WRONLY | _O_BINARY);
    const bool taken = sink >= 0 && ::_dup2(sink, standard_output) == 0;
    const int error = errno;
    if (target == nullptr && sink >= 0)
        ::_close(sink);
    if (taken)
        return saved;
    ::_close(saved);
    errno = error;
    return -1;
}

void give_standard_output_back(int saved) {
    static_cast<void>(::_dup2(saved, standard_output));
    ::_close(saved);
}

// By its whole path: neither the current directory nor PATH has a say. It lies beside the command
// where both were built, and in the folder for programs of an installation.
LoadedLibrary::LoadedLibrary(const char *name) : handle_(nullptr) {
    const std::filesystem::path folder = own_folder();
    DWORD error = ERROR_MOD_NOT_FOUND;
    for (const std::filesystem::path &place :
         {folder / name, folder.parent_path() / "bin" / name}) {
        handle_ = ::LoadLibraryExW(place.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
        if (handle_ != nullptr)
            return;
        error = ::GetLastError();
        if (error != ERROR_MOD_NOT_FOUND)
            break;
    }
    fail_to_load(error);
}

void *LoadedLibrary::find(const char *name) const {
    const FARPROC address = ::GetProcAddress(static_cast<HMODULE>(handle_), name);
    if (address == nullptr)
        fail_to_load(::GetLastError());
    return reinterpret_cast<void *>(address);
}

} // namespace kova_command::platform
