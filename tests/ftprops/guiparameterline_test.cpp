#include "ftprops/guiparameterline.h"

#include <gtest/gtest.h>

namespace vyr {
namespace {

struct LineCase
{
    const char *line;
    const char *type;
    const char *name;
    StringList qualifiers;
    StringList choices;
    const char *prompt;
};

TEST(GuiParameterLineTest, ReadsTypeNameQualifierChoicesAndPrompt)
{
    const LineCase cases[] = {
        {"GUI OPTIONAL CHOICE MODE fast%slow Choose a mode", "CHOICE", "MODE", {}, {"fast", "slow"}, "Choose a mode"},
        {"GUI FILENAME SRC *.txt Source file", "FILENAME", "SRC", {"*.txt"}, {}, "Source file"},
        {"GUI CHOICE OPTIONAL x%y Prompt", "CHOICE", "OPTIONAL", {}, {"x", "y"}, "Prompt"},
        {"GUI LISTBOX L a%%b%%%\"c d\"% Pick  some   ", "LISTBOX", "L", {}, {"a", "b", "c d"}, "Pick some"},
        {"GUI INTEGER N \"Number of (things)\"", "INTEGER", "N", {}, {}, "Number of (things)"},
        {"GUI TEXT T Say \\\"hi\\\"", "TEXT", "T", {}, {}, "Say \"hi\""},
        {"GUI CHECKBOX C Yes%No", "CHECKBOX", "C", {}, {"Yes", "No"}, ""},
        {"GUI DIVIDER", "DIVIDER", "", {}, {}, ""},
        {"GUI", "", "", {}, {}, ""},
        {"GUI MULTIFILE M", "MULTIFILE", "M", {}, {}, ""},
        {"DEFAULT_MACRO MODE fast", "", "", {}, {}, ""},
        {"gui CHOICE MODE a%b x", "", "", {}, {}, ""},
        {"GUI CHOICE MODE \"unbalanced", "", "", {}, {}, ""},
        {"", "", "", {}, {}, ""},
    };
    for (const LineCase &c : cases) {
        const GuiParameterLine line = ParseParameterLine(c.line);
        EXPECT_EQ(line.type, c.type) << c.line;
        EXPECT_EQ(line.name, c.name) << c.line;
        EXPECT_EQ(line.qualifiers, c.qualifiers) << c.line;
        EXPECT_EQ(line.choices, c.choices) << c.line;
        EXPECT_EQ(line.prompt, c.prompt) << c.line;
    }
}

TEST(GuiParameterLineTest, ModifiersOnlyBeforeTheType)
{
    const GuiParameterLine all = ParseParameterLine(
        "GUI FORCE_DEFS ALWAYS_ENABLED OPTIONAL WHOLE_LINE DISABLED_ONLY OPTIONAL INTEGER N Prompt");
    EXPECT_TRUE(all.optional && all.wholeLine && all.disabledOnly && all.alwaysEnabled && all.forceDefaults);
    EXPECT_EQ(all.type, "INTEGER");

    const GuiParameterLine none = ParseParameterLine("GUI INTEGER N OPTIONAL WHOLE_LINE");
    EXPECT_FALSE(none.optional || none.wholeLine);
    EXPECT_EQ(none.prompt, "OPTIONAL WHOLE_LINE");
}

} // namespace
} // namespace vyr
