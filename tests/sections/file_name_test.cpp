// The name of the import file as the host gives it, and of the model file after it.

#include "tests/support/import_run.h"
#include "tests/support/model_text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace kova_test {
namespace {

using Lines = std::vector<std::string>;

TEST(FileName, NamesTheModelFileUpToItsFirstFullStop) {
    // Bring the name into a known state: nothing behind position 4 but what this import leaves.
    const auto file_name_of = [](const ImportSettings &settings) {
        return import_text(text_of(legacy_records()), settings).arguments_of("PFILENAME");
    };
    ImportSettings settings;
    settings.path = "./././././model.inp";
    EXPECT_TRUE(file_name_of(settings).at(0).starts_with("text[513] \".KIF"));
    settings.path = "model.inp";
    const std::string first = file_name_of(settings).at(0);
    EXPECT_TRUE(first.starts_with("text[513] \"model.KIF")) << first;
    // A full stop in a folder's name counts, and what stood behind the extension stays.
    settings.path = "./model.inp";
    const std::string second = file_name_of(settings).at(0);
    EXPECT_TRUE(second.starts_with("text[513] \".KIFl.KIF")) << second;
}

TEST(FileName, WithoutAFullStopIsTheModelFileName) {
    ImportSettings settings;
    settings.path = "model";
    settings.before = [](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "GFILENAME")
            std::filesystem::rename("model.inp", "model");
    };
    const ImportRun run = import_text(text_of(legacy_records()), settings);
    EXPECT_EQ(run.arguments_of("PFILENAME").size(), 1U);
    EXPECT_TRUE(run.arguments_of("PFILENAME")
                    .at(0)
                    .starts_with("text[513] \"model\\0\" "
                                 "505*\" \" \""))
        << run.arguments_of("PFILENAME").at(0);
}

// Nothing passes position 512, and the last position is not looked at: it keeps what the import
// before has left there.
TEST(FileName, GivesTheModelFileWhatOfItsExtensionHasRoom) {
    const std::string folders = std::string(250, 'a') + "/" + std::string(250, 'b') + "/";
    struct Case {
        std::string extension;
        std::string end;
    };
    for (const Case &each : std::vector<Case>{{".inp", "c.KIF"},
                                              {".", "cF"},
                                              {"", "cF"},
                                              {".in", "c.KI"},
                                              {"", "cI"},
                                              {".i", "c.K"},
                                              {".", "cK"}}) {
        std::string path = folders;
        path.append(512 - path.size() - each.extension.size(), 'c');
        path += each.extension;
        std::string model_file_name;
        ImportSettings settings;
        settings.path = path;
        settings.before = [&](const kova_host::ReceivedCommand &command) {
            if (command.keyword == "GFILENAME") {
                std::filesystem::create_directories(folders);
                std::filesystem::rename("model.inp", path);
            }
            if (command.keyword == "PFILENAME")
                model_file_name = command.text(0);
        };
        static_cast<void>(import_text(text_of(legacy_records()), settings));
        EXPECT_EQ(model_file_name.size(), 513U) << each.extension;
        EXPECT_TRUE(model_file_name.ends_with(each.end + '\0'))
            << each.extension << ": " << model_file_name.substr(500);
    }
}

TEST(FileName, IsCutWithItsNulWhereTheOpenFailureHas132Characters) {
    struct Case {
        std::size_t length;
        std::string shown;
    };
    for (const Case &each : std::vector<Case>{{125, std::string(125, 'p') + "\\0"},
                                              {126, std::string(126, 'p')},
                                              {130, std::string(126, 'p')}}) {
        ImportSettings settings;
        settings.path = std::string(each.length, 'p');
        EXPECT_EQ(import_text("", settings).log.back(),
                  "1 PINFOHTML[10] text[132] \"File: " + each.shown + "\"");
    }
}

TEST(FileName, Of512CharactersIsOpenedWhole) {
    std::string folders;
    while (folders.size() < 502)
        folders += "./";
    ImportSettings settings;
    settings.path = folders + "/model.inp";
    ASSERT_EQ(settings.path.size(), 512U);
    const ImportRun run = import_text(text_of(legacy_records()), settings);
    EXPECT_EQ(run.arguments_of("PNUMSEG"), Lines{"int 2"});
}

TEST(FileName, EndsAtItsNulForTheFileAndIsShownWhole) {
    ImportSettings settings;
    settings.path = std::string("missing\0junk.xyz", 16);
    EXPECT_EQ(import_text("", settings).log.back(),
              "1 PINFOHTML[10] text[132] \"File: missing\\0junk.xyz\\0\" 109*\" \"");
    settings.path = std::string("model.inp\0.", 11);
    EXPECT_EQ(import_text(text_of(legacy_records()), settings).arguments_of("PNUMSEG"),
              Lines{"int 2"});
}

TEST(FileName, KeepsTheBlanksBeforeANul) {
    ImportSettings settings;
    settings.path = std::string("a.inp   \0junk", 13);
    settings.before = [](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "GFILENAME")
            std::filesystem::rename("model.inp", "a.inp   ");
    };
    const std::string text = text_of(legacy_records());
    EXPECT_EQ(import_text(text, settings).arguments_of("PNUMSEG"), Lines{"int 2"});
    settings.before = [](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "GFILENAME")
            std::filesystem::rename("model.inp", "a.inp");
    };
    const ImportRun run = import_text(text, settings);
    ASSERT_EQ(run.notices.size(), 1U);
    EXPECT_EQ(run.notices[0].kind, IMPORT_EXPORT_OPEN_FAILED);
    EXPECT_EQ(run.notices[0].path, "a.inp   ");
}

} // namespace
} // namespace kova_test
