#include "runtime/Text.h"
#include "support/FailureOf.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace trovarium {

TEST(Text, CapitalsAreThoseOfAsciiAndWindows1252AndOrderTheLists)
{
    EXPECT_EQ(upper("azAZ09_-.{`"), "AZAZ09_-.{`");
    EXPECT_EQ(upper("àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþÿšœž"), "ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞŸŠŒŽ");
    EXPECT_EQ(upper("×÷ßµƒŸŠŒŽ€ąčжω漢😀"), "×÷ßµƒŸŠŒŽ€ąčжω漢😀") << "letters beyond Windows-1252 stay";
    EXPECT_TRUE(equalInCapitals("Fähre ÿ.JPG", "fÄHRE Ÿ.jpg"));
    EXPECT_FALSE(equalInCapitals("a", "ab") || equalInCapitals("ab", "bb"));
    for (int lead = 0; lead < 256; ++lead) { // also in a damaged text no place changes
        const std::string damaged{'a', static_cast<char>(lead), '\xBF', 'z', static_cast<char>(lead)};
        EXPECT_TRUE(equalInCapitals(damaged, upper(damaged))) << lead;
    }
    const std::vector<std::string> sorted{"  All Photos  ", "!", "A", "a", "a1", "B", "b", "Z", "_", "Ä", "ä"};
    std::vector<std::string> names(sorted.rbegin(), sorted.rend());
    std::sort(names.begin(), names.end(), listedBefore);
    EXPECT_EQ(names, sorted);
}

TEST(Text, ASearchWithoutCaseGivesBytePositionsAndCutsTakeWhatIsThere)
{
    EXPECT_EQ(findNoCase("Im Hafen von Köln", "KÖLN"), 13U);
    EXPECT_EQ(findNoCase("aXbx", "x", 2), 3U);
    EXPECT_EQ(findNoCase("abc", "", 3), 3U);
    EXPECT_EQ(findNoCase("abc", "", 4), std::string_view::npos);
    EXPECT_EQ(findNoCase("aab", "AB"), 1U);
    EXPECT_EQ(std::string("<").append(trimmed("  a b  ")).append(trimmed("   ")) + ">", "<a b>");
    EXPECT_EQ(std::string(left("abc", 5)).append(right("abc", 2)).append(right("abc", 5)), "abcbcabc");
    EXPECT_EQ(withoutLast("photo.jpg.info", 5), "photo.jpg");
    EXPECT_EQ(withoutLast(".info", 5), "");
    EXPECT_EQ(failureOf([] { withoutLast("info", 5); }), "Invalid procedure call or argument");
    EXPECT_EQ(firstCharacters("Fähre €", 2) + firstCharacters("é", 9) + firstCharacters("é", 0), "Fäé");
}

TEST(Text, ALineOnDiskLosesNothing)
{
    for (const std::string_view good :
        {"", "plain ascii, longer than eight", "é", "€", "😀", "\xED\x9F\xBF", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(isUtf8(good)) << good;
    for (const std::string_view bad : {"\xE9", "\x80", "\xC3", "\xC0\xAF", "\xE0\x80\x80", "\xED\xA0\x80",
             "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xE2\x82", "12345678\xFF"})
        EXPECT_FALSE(isUtf8(bad));
    std::string bytes;
    for (int value = 0x80; value < 0x100; ++value)
        bytes += static_cast<char>(value);
    EXPECT_EQ(characterCount(decodeLine(bytes)), bytes.size());
    for (const auto& [text, line] :
        std::vector<std::pair<std::string, std::string>>{{"Title=Hafen", "Title=Hafen"}, {"Köln", "K\xF6ln"},
            {"10 €", "10 \x80"}, {"Łódź", "Łódź"}, {"漢字", "漢字"}, {"€\u0081Š\u008DŸé", "\x80\x81\x8A\x8D\x9F\xE9"},
            {"Ã©", "Ã©"}, // whose Windows-1252 bytes would read as "é"
            {"\u0080", "\u0080"}, {decodeLine(bytes), bytes}}) {
        EXPECT_EQ(encodeLine(text), line);
        EXPECT_EQ(decodeLine(line), text);
    }
    // Any two characters beyond ASCII survive the way to the disk and back.
    for (char32_t first = 0xA0; first < 0x180; ++first) {
        for (char32_t second = 0x80; second < 0x100; ++second) {
            const std::string text{static_cast<char>(0xC0 | first >> 6), static_cast<char>(0x80 | (first & 0x3F)),
                static_cast<char>(0xC0 | second >> 6), static_cast<char>(0x80 | (second & 0x3F))};
            ASSERT_EQ(decodeLine(encodeLine(text)), text);
        }
    }
}

} // namespace trovarium
