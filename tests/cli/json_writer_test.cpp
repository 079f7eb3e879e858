#include "cli/json_writer.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace kova_command {
namespace {

/// What is written to a document, and how often the sink was called.
struct Written {
    std::string text;
    int pieces = 0;
};

template <class Write>
Written written_by(Write write) {
    Written written;
    JsonWriter out([&written](std::string_view piece) {
        written.text += piece;
        ++written.pieces;
    });
    write(out);
    out.finish();
    return written;
}

TEST(JsonWriter, WritesWhatTheLibraryWritesOfTheWhole) {
    const Json entry = {
        {"name", "a \"b\"\nc"}, {"list", {1, 2.5, nullptr}}, {"none", Json::array()}};
    const Json whole = {{"entries", Json::array({entry, entry})},
                        {"empty", Json::array()},
                        {"nothing", Json::object()},
                        {"nested", {{"numbers", {1, 2}}, {"null", nullptr}}}};
    const Written written = written_by([&](JsonWriter &out) {
        out.open_object();
        out.key("entries");
        out.list(std::vector<Json>{entry, entry}, [&](const Json &each) { out.value(each); });
        out.key("empty");
        out.list(std::vector<Json>{}, [&](const Json &each) { out.value(each); });
        out.key("nothing");
        out.open_object();
        out.close();
        out.key("nested");
        out.open_object();
        out.member("numbers", {1, 2});
        out.member("null", nullptr);
        out.close();
        out.close();
    });
    EXPECT_EQ(written.text, whole.dump(2) + "\n");
    EXPECT_EQ(written.pieces, 1);
}

TEST(JsonWriter, WritesALongDocumentInPieces) {
    constexpr int count = 100000;
    const Written written = written_by([&](JsonWriter &out) {
        out.open_list();
        for (int i = 0; i < count; ++i)
            out.value(i);
        out.close();
    });
    EXPECT_GT(written.pieces, 5);
    const Json list = Json::parse(written.text);
    ASSERT_EQ(list.size(), std::size_t{count});
    EXPECT_EQ(list[count - 1], count - 1);
}

TEST(JsonWriter, WritesNumbersWithTheDigitsThatPeopleWrite) {
    const float infinite = std::numeric_limits<float>::infinity();
    const Written written = written_by([&](JsonWriter &out) {
        out.open_list();
        for (const float number : {0.0F, -0.0F, 0.1F, 0.1F, 1e-9F, infinite, 5.0F})
            out.number(number);
        out.close();
    });
    EXPECT_EQ(written.text, "[\n  0.0,\n  -0.0,\n  0.1,\n  0.1,\n  1e-09,\n  null,\n  5.0\n]\n");
}

TEST(JsonWriter, EscapesWhatATerminalObeysOrNobodySees) {
    const std::string text = "\x1B\x7F\xC2\x9B \xE2\x80\xAE \xF3\xA0\x81\x81 \xE2\x80\xA8 \xC3\xA9";
    const Written written = written_by([&](JsonWriter &out) {
        out.open_object();
        out.member(text, text);
        out.close();
    });
    const std::string escaped = "\"\\u001b\\u007f\\u009b \\u202e \\udb40\\udc41 \\u2028 \xC3\xA9\"";
    EXPECT_EQ(written.text, "{\n  " + escaped + ": " + escaped + "\n}\n");
    EXPECT_EQ(Json::parse(written.text), (Json{{text, text}}));
}

} // namespace
} // namespace kova_command
