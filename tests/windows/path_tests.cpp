// Paths and files as Windows has them: each import goes through the library, with the bytes that a
// host would write into its field. Run with the code page 1252.

#include "tests/support/import_run.h"
#include "tests/support/model_text.h"
#include "tests/support/temporary_file.h"

#include <algorithm>
#include <cfenv>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

#include <xmmintrin.h>

namespace kova_test {
namespace {

namespace files = std::filesystem;

int failures = 0;

void check(bool holds, const std::string &what) {
    if (holds)
        return;
    ++failures;
    std::fprintf(stderr, "FAILED: %s\n", what.c_str());
}

std::string bytes_of(std::u8string_view text) { return {text.begin(), text.end()}; }

std::string utf8_of(const files::path &path) { return bytes_of(path.u8string()); }

/// A path in the active code page, as the narrow functions of the system give it.
std::string narrow(const files::path &path) {
    std::string result(1024, '\0');
    const int size =
        ::WideCharToMultiByte(CP_ACP, 0, path.c_str(), -1, result.data(), 1024, nullptr, nullptr);
    result.resize(static_cast<std::size_t>(size) - 1);
    return result;
}

std::string model_text() { return text_of(legacy_opening()); }

ImportRun import_file(const std::string &path, const ImportSettings &wanted = {}) {
    ImportSettings settings = wanted;
    settings.path = path;
    return run_routine([] { importexport(); }, settings);
}

/// Why the file could not be opened; empty when it was.
std::string refusal(const ImportRun &run) {
    const std::vector<Notice> notices = run.notices_of(IMPORT_EXPORT_OPEN_FAILED);
    if (notices.empty())
        return run.arguments_of("PNUMSYS").empty() ? "opened, but not read" : "";
    return notices.front().reason;
}

void expect_opened(const std::string &path) {
    const std::string reason = refusal(import_file(path));
    check(reason.empty(), path + " is opened: " + reason);
}

void expect_refused(const std::string &path, const std::string &reason) {
    const std::string found = refusal(import_file(path));
    check(found == reason, path + ": expected \"" + reason + "\", got \"" + found + "\"");
}

void write_model(const files::path &path) {
    files::create_directories(path.parent_path());
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    const std::string text = model_text();
    DWORD written = 0;
    check(::WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != 0,
          "the file is written");
    ::CloseHandle(file);
}

std::string with_slashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

void names_in_utf8(const files::path &folder) {
    for (const char8_t *name :
         {u8"Größe & Länge", u8"with  two blanks", u8"Étude à l'été", u8"Ω Δ", u8"река", u8"日本語",
          u8"نهر", u8"e\u0301 combined", u8"\U0001F30A wave", u8"50% (copy) [2] {3} #1 ;,+=~"}) {
        const files::path file = folder / files::path(name) / files::path(u8"модель ñ.inp");
        write_model(file);
        expect_opened(utf8_of(file));
        expect_opened(with_slashes(utf8_of(file)));
        expect_opened(utf8_of(file.lexically_relative(files::current_path())));
        expect_refused(utf8_of(file) + "x", "there is no such file");
    }
}

void names_in_the_code_page(const files::path &folder) {
    check(::GetACP() == 1252, "the code page is 1252");
    for (const char8_t *name : {u8"Größe & Länge", u8"Étude à l'été", u8"€ uro"}) {
        const files::path file = folder / u8"narrow" / files::path(name) / u8"modèle.inp";
        write_model(file);
        check(narrow(file) != utf8_of(file), "the two spellings differ");
        expect_opened(narrow(file));
        expect_opened(narrow(file.lexically_relative(files::current_path())));
    }
}

// Bytes that are valid UTF-8 are never taken for the code page, even where only that file exists.
void utf8_comes_first(const files::path &folder) {
    const files::path seen_narrow = folder / files::path(u8"first") / files::path(u8"Ã¶.inp");
    const files::path seen_utf8 = folder / files::path(u8"first") / files::path(u8"ö.inp");
    write_model(seen_narrow);
    check(narrow(seen_narrow) == utf8_of(seen_utf8), "two names have the same bytes");
    expect_refused(utf8_of(seen_utf8), "there is no such file");
    write_model(seen_utf8);
    files::remove(seen_narrow);
    expect_opened(utf8_of(seen_utf8));
    // one wrong byte, and the whole path is text in the code page
    const files::path both = folder / files::path(u8"first") / files::path(u8"Ã¶ é.inp");
    write_model(both);
    expect_opened(narrow(both));
}

void drives_and_shares(const files::path &folder) {
    const files::path file = folder / "drives" / "model.inp";
    write_model(file);
    const std::string path = utf8_of(file);
    const std::string drive = path.substr(0, 2);
    check(drive[1] == ':', "the path starts with a drive");
    const files::path before = files::current_path();
    files::current_path(file.parent_path());
    expect_opened("model.inp");
    expect_opened(".\\model.inp");
    expect_opened("..\\drives\\model.inp");
    expect_opened("../drives/model.inp");
    expect_opened(drive + "model.inp"); // at the current directory of the drive
    expect_opened(path.substr(2));      // at the root of the current drive
    expect_opened("MODEL.INP");
    files::current_path(before);
    expect_opened("\\\\?\\" + path);
    expect_opened("\\\\.\\" + path);
    expect_refused("\\\\?\\" + path + "x", "there is no such file");
    expect_refused("q:\\model.inp", "there is no such file");
    expect_refused("1:\\model.inp", "there is no such file");
    expect_refused("\\\\no-such-server\\share\\model.inp", "there is no such file");
    expect_refused("//no-such-server/share/model.inp", "there is no such file");
    expect_refused(path + "\\model.inp", "there is no such file");
    expect_refused("a<b>.inp", "there is no such file");
    expect_refused("a|b?.inp", "there is no such file");
    expect_refused("*.inp", "there is no such file");
    expect_refused("", "no file was named");
}

void folders_and_devices(const files::path &folder) {
    expect_refused(utf8_of(folder), "it is a folder");
    expect_refused(utf8_of(folder) + "\\", "it is a folder");
    expect_refused(".", "it is a folder");
    expect_refused("C:\\", "it is a folder");
    for (const char *name : {"NUL", "nul", "NUL.", "\\\\.\\NUL"})
        expect_refused(name, "it is not a regular file");
    // Whether there is such a device differs; none is a file.
    for (const char *name :
         {"CON", "con", "CONIN$", "CONOUT$", "AUX", "PRN", "COM1", "LPT1", "COM9",
          "\\\\.\\pipe\\no-such-pipe", "\\\\.\\PhysicalDrive0", "\\\\.\\C:"})
        check(!refusal(import_file(name)).empty(), std::string(name) + " is refused");
    const HANDLE pipe = ::CreateNamedPipeW(L"\\\\.\\pipe\\kova-test", PIPE_ACCESS_OUTBOUND,
                                           PIPE_TYPE_BYTE, 1, 4096, 4096, 0, nullptr);
    check(pipe != INVALID_HANDLE_VALUE, "a pipe is made");
    expect_refused("\\\\.\\pipe\\kova-test", "it is not a regular file");
    ::CloseHandle(pipe);
}

void long_paths(const files::path &folder) {
    const std::wstring part(100, L'p');
    const files::path deep = folder / part / part / part;
    files::path made = L"\\\\?\\" + folder.native();
    for (int i = 0; i < 3; ++i) {
        made = made.native() + L"\\" + part;
        check(::CreateDirectoryW(made.c_str(), nullptr) != 0, "a deep folder is made");
    }
    write_model(made.native() + L"\\model.inp");
    const files::path file = deep / "model.inp";
    check(file.native().size() > MAX_PATH, "the path is long");
    expect_opened(utf8_of(file));
    expect_opened(with_slashes(utf8_of(file)));
    expect_opened("\\\\?\\" + utf8_of(file));
    expect_opened(utf8_of(file.lexically_relative(files::current_path())));
    expect_refused(utf8_of(file) + "x", "there is no such file");
    // up to the last of the 512 characters of the field
    std::string whole = utf8_of(folder) + "\\.";
    while (whole.size() + 12 <= 512)
        whole += "\\.";
    while (whole.size() + 10 < 512)
        whole += "\\";
    const std::string name = "model.inp";
    write_model(folder / name);
    whole += '\\' + name;
    check(whole.size() == 512, "the path fills the field: " + std::to_string(whole.size()));
    expect_opened(whole);
    ::DeleteFileW((made.native() + L"\\model.inp").c_str());
    for (int i = 0; i < 3; ++i) {
        ::RemoveDirectoryW(made.c_str());
        made = made.parent_path();
    }
}

/// Does something while the import file is open, at the first line of the version page.
ImportRun import_and_meanwhile(const std::string &path, const std::function<void()> &action) {
    ImportSettings settings;
    bool done = false;
    settings.before = [&](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PCLEARINFO" && !done) {
            done = true;
            action();
        }
    };
    ImportRun run = import_file(path, settings);
    check(done, "something is done meanwhile");
    return run;
}

HANDLE open_sharing(const files::path &path, DWORD access, DWORD sharing) {
    return ::CreateFileW(path.c_str(), access, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
}

void other_programs(const files::path &folder) {
    const files::path file = folder / "shared" / "model.inp";
    const files::path other_name = folder / "shared" / "renamed.inp";
    constexpr DWORD all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    write_model(file);
    for (const DWORD access : {DWORD{GENERIC_READ}, DWORD{GENERIC_WRITE}, DWORD{DELETE}}) {
        const ImportRun run = import_and_meanwhile(utf8_of(file), [&] {
            const HANDLE handle = open_sharing(file, access, all);
            check(handle != INVALID_HANDLE_VALUE, "the file can be opened meanwhile");
            ::CloseHandle(handle);
        });
        check(refusal(run).empty(), "the import goes on");
    }
    check(refusal(import_and_meanwhile(utf8_of(file), [&] { files::rename(file, other_name); }))
              .empty(),
          "the file can be renamed meanwhile");
    check(refusal(import_and_meanwhile(utf8_of(other_name), [&] { files::remove(other_name); }))
              .empty(),
          "the file can be deleted meanwhile");

    write_model(file);
    HANDLE handle = open_sharing(file, GENERIC_WRITE, all);
    expect_opened(utf8_of(file));
    ::CloseHandle(handle);
    handle = open_sharing(file, GENERIC_READ, 0);
    expect_refused(utf8_of(file), "another program keeps the file to itself");
    ::CloseHandle(handle);
    expect_opened(utf8_of(file));
    check(files::remove(file), "no handle is left open");
}

/// The name that the utility proposes for the model file, up to the end of its extension.
std::string proposed_name(const std::string &path) {
    const std::vector<std::string> arguments = import_file(path).arguments_of("PFILENAME");
    if (arguments.empty())
        return "none";
    const std::size_t start = arguments[0].find('"') + 1;
    return arguments[0].substr(start, arguments[0].find(".KIF") + 4 - start);
}

/// A backslash as the command log shows it.
std::string as_logged(std::string path) {
    for (std::size_t i = 0; (i = path.find('\\', i)) != std::string::npos; i += 2)
        path.insert(i, 1, '\\');
    return path;
}

void name_of_the_model_file(const files::path &folder) {
    const files::path file = folder / "names" / "v1.2 final" / "model.inp";
    write_model(file);
    const std::string base = utf8_of(folder) + "\\names\\";
    const auto expect = [](const std::string &path, const std::string &name) {
        const std::string found = proposed_name(path);
        check(found == as_logged(name),
              path + " proposes " + found + ", expected " + as_logged(name));
    };
    expect(base + "v1.2 final\\model.inp", base + "v1.KIF");
    expect(with_slashes(base) + "v1.2 final/model.inp", with_slashes(base) + "v1.KIF");
    expect("\\\\.\\" + base + "v1.2 final\\model.inp", "\\\\.KIF");
    const files::path before = files::current_path();
    files::current_path(file.parent_path());
    expect(".\\model.inp", ".KIF");
    expect("..\\v1.2 final\\model.inp", ".KIF");
    expect("model.inp", "model.KIF");
    files::current_path(before);
}

void line_ends() {
    std::string text = model_text();
    // The end of a file for programs of long ago; here a character like any other.
    text += "Names\n1 'Upper\x1APool'\n";
    const ImportRun one = import_text(text);
    std::string with_returns;
    for (const char character : text) {
        if (character == '\n')
            with_returns += '\r';
        with_returns += character;
    }
    const ImportRun other = import_text(with_returns);
    check(one.log == other.log && one.console == other.console,
          "LF and CR LF give the same commands");
    check(one.log.size() > 60, "and there are many");
}

void floating_point_settings() {
    // rounded down it would be another number, and flushed it would be 0
    std::string text = model_text();
    text.replace(text.find("365.5"), 5, "365.1");
    text.replace(text.find("0.75"), 4, "1e-42");
    const ImportRun expected = import_text(text);
    check(expected.arguments_of("PFRACMAXTS").front() != "real 0", "not flushed");
    check(expected.arguments_of("PENDJULIAN").front() == "real 365.100006", "rounded to nearest");
    const unsigned before = _mm_getcsr();
    constexpr unsigned flush_to_zero = 0x8040;
    std::fesetround(FE_DOWNWARD);
    _mm_setcsr(_mm_getcsr() | flush_to_zero);
    const unsigned wanted = _mm_getcsr();
    const ImportRun run = import_text(text);
    constexpr unsigned flags = 0x3F; // what has happened, not what is set
    check((_mm_getcsr() & ~flags) == (wanted & ~flags), "the host's settings are back");
    check(std::fegetround() == FE_DOWNWARD, "the host's rounding is back");
    std::fesetround(FE_TONEAREST);
    _mm_setcsr(before);
    check(run.log == expected.log, "the host's settings change no number");
}

void run(const char *name, const std::function<void()> &test) {
    const int before = failures;
    try {
        test();
    } catch (const std::exception &error) {
        check(false, error.what());
    }
    std::printf("%s: %s\n", name, failures == before ? "passed" : "FAILED");
    std::fflush(stdout);
}

} // namespace

int run_all(const std::vector<std::string> &shares) {
    const TemporaryFolder scratch;
    const files::path before = files::current_path();
    files::current_path(scratch.path());
    const files::path folder = files::current_path();
    run("names in UTF-8", [&] { names_in_utf8(folder); });
    run("names in the code page", [&] { names_in_the_code_page(folder); });
    run("UTF-8 comes first", [&] { utf8_comes_first(folder); });
    run("drives and shares", [&] {
        drives_and_shares(folder);
        for (const std::string &path : shares)
            expect_opened(path);
    });
    run("folders and devices", [&] { folders_and_devices(folder); });
    run("long paths", [&] { long_paths(folder); });
    run("other programs", [&] { other_programs(folder); });
    run("name of the model file", [&] { name_of_the_model_file(folder); });
    run("line ends", line_ends);
    run("floating-point settings", floating_point_settings);
    files::current_path(before);
    return failures == 0 ? 0 : 1;
}

} // namespace kova_test

/// The arguments are paths on shares that must open.
int main(int argument_count, char **arguments) {
    return kova_test::run_all({arguments + 1, arguments + argument_count});
}
