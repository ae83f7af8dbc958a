#include "core/json_writer.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <sstream>

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(JsonWriter, NestsObjectsAndArraysWithIndents) {
    std::ostringstream out;
    JsonWriter json(out);
    json.BeginObject();
    json.Key("Name");
    json.String("Riser");
    json.Key("Counts");
    json.BeginArray(true);
    json.Number(std::int16_t{1});
    json.Number(std::int16_t{-2});
    json.EndArray();
    json.Key("Rows");
    json.BeginArray();
    json.BeginObject();
    json.Key("Flow");
    json.Number(12.5);
    json.EndObject();
    json.BeginObject();
    json.EndObject();
    json.EndArray();
    json.Key("Empty");
    json.BeginArray();
    json.EndArray();
    json.Key("Flags");
    json.BeginArray(true);
    json.Boolean(true);
    json.Boolean(false);
    json.Null();
    json.EndArray();
    json.EndObject();
    EXPECT_EQ(out.str(), "{\n"
                         "  \"Name\": \"Riser\",\n"
                         "  \"Counts\": [1, -2],\n"
                         "  \"Rows\": [\n"
                         "    {\n"
                         "      \"Flow\": 12.5\n"
                         "    },\n"
                         "    {}\n"
                         "  ],\n"
                         "  \"Empty\": [],\n"
                         "  \"Flags\": [true, false, null]\n"
                         "}\n");
}

TEST(JsonWriter, EscapesQuotesBackslashesAndControlCharacters) {
    std::ostringstream out;
    JsonWriter json(out);
    json.BeginArray(true);
    json.String("a\"b\\c/\b\f\n\r\t");
    json.String(std::string("\x01\x1f\x7f", 3) + std::string(1, '\0'));
    json.String("Caf\xC3\xA9 \xE2\x82\xAC");
    json.EndArray();
    EXPECT_EQ(out.str(), "[\"a\\\"b\\\\c/\\b\\f\\n\\r\\t\", \"\\u0001\\u001f\x7f\\u0000\", "
                         "\"Caf\xC3\xA9 \xE2\x82\xAC\"]\n");
}

TEST(JsonWriter, KeysAreEscapedToo) {
    std::ostringstream out;
    JsonWriter json(out);
    json.BeginObject();
    json.Key("a\"b");
    json.Number(1);
    json.EndObject();
    EXPECT_EQ(out.str(), "{\n  \"a\\\"b\": 1\n}\n");
}

TEST(JsonWriter, NumbersAreTheShortestTextOfTheirWidth) {
    auto text = [](auto value) {
        std::ostringstream out;
        JsonWriter json(out);
        json.Number(value);
        return out.str();
    };
    EXPECT_EQ(text(0.1f), "0.1\n");
    EXPECT_EQ(text(0.1), "0.1\n");
    EXPECT_EQ(text(static_cast<float>(0.1)), "0.1\n");
    EXPECT_EQ(text(static_cast<double>(0.1f)), "0.10000000149011612\n");
    EXPECT_EQ(text(1.0f / 3.0f), "0.33333334\n");
    EXPECT_EQ(text(1.0 / 3.0), "0.3333333333333333\n");
    EXPECT_EQ(text(-4.0f), "-4\n");
    EXPECT_EQ(text(1e20f), "1e+20\n");
    EXPECT_EQ(text(2.5e-7), "2.5e-07\n");
    EXPECT_EQ(text(std::int16_t{-32768}), "-32768\n");
    EXPECT_EQ(text(std::int32_t{2147483647}), "2147483647\n");
    EXPECT_EQ(text(std::uint8_t{255}), "255\n");
    EXPECT_EQ(text(std::numeric_limits<float>::quiet_NaN()), "null\n");
    EXPECT_EQ(text(std::numeric_limits<double>::infinity()), "null\n");
    EXPECT_EQ(text(-std::numeric_limits<float>::infinity()), "null\n");
    EXPECT_EQ(text(std::numeric_limits<double>::max()), "1.7976931348623157e+308\n");
}

} // namespace
} // namespace quench
