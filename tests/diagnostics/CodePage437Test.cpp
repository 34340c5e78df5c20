#include "diagnostics/CodePage437.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

struct Character {
    const char* name;
    char16_t character;
    int code;
};

class Characters : public testing::TestWithParam<Character> {};

TEST_P(Characters, HaveTheirGlyph)
{
    EXPECT_EQ(CodePage437::CodeOf(GetParam().character), GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(CodePage437, Characters,
                         testing::Values(Character{"Digit", u'7', 55}, Character{"Letter", u'z', 122},
                                         Character{"AcuteE", u'é', 130}, Character{"SharpS", u'ß', 225},
                                         Character{"Box", u'╬', 206}, Character{"Block", u'█', 219},
                                         Character{"Heart", u'♥', 3}, Character{"House", u'⌂', 127},
                                         Character{"Degree", u'°', 248}, Character{"CodeOfDegree", char16_t(248), 248},
                                         Character{"ControlCode", char16_t(7), 7}, Character{"NoBreak", u'\u00a0', 32},
                                         Character{"ForeignLetter", u'À', '?'}, Character{"Euro", u'€', '?'},
                                         Character{"Chinese", u'中', '?'}, Character{"Surrogate", 0xD83D, '?'}),
                         [](const auto& row) { return row.param.name; });

TEST(CodePage437, EveryGlyphIsFoundByWhatItShows)
{
    for (int code = 1; code < 255; ++code)
        EXPECT_EQ(CodePage437::CodeOf(CodePage437::CharacterOf(std::uint8_t(code))), code);
}

TEST(CodePage437, TheEmptyGlyphsReadAsBlanks)
{
    for (const int code : {0, 32, 255})
        EXPECT_EQ(CodePage437::CharacterOf(std::uint8_t(code)), QChar(u' ')) << code;
}

}  // namespace
}  // namespace fenrik
