#include "ftpropsdlg/applyselection.h"

#include "util/resourceids.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace vyr {
namespace {

// Prompt texts as "p<id>"; Yes and No as the resource library words them.
std::string promptText(unsigned id)
{
    if (id == res::Yes)
        return "Yes";
    if (id == res::No)
        return "No";
    return "p" + std::to_string(id);
}

// The keys of the definition lines, in order: each line's third word, or its
// last when it has fewer ("DIVIDER" for the divider).
StringList keysOf(const StringList &lines)
{
    StringList keys;
    for (const std::string &line : lines) {
        std::istringstream words(line);
        std::string key;
        for (int i = 0; i < 3 && words >> key; ++i) {}
        keys.push_back(key);
    }
    return keys;
}

ApplyPromptInput destinationInput()
{
    ApplyPromptInput input;
    input.otherFeatureTypes = {"roads", "land use"};
    input.destination = true;
    return input;
}

TEST(ApplyPromptTest, asksWhatTheRoleAndFormatAllowInTheirOrder)
{
    struct Case
    {
        const char *name;
        bool destination;
        bool database;
        StringList keys;
    };
    const Case cases[] = {
        {"source", false, false, {"FEAT_TYPES", "DIVIDER", "MERGE"}},
        {"source database", false, true, {"FEAT_TYPES", "DIVIDER", "DB_USER", "MERGE"}},
        {"destination", true, false, {"FEAT_TYPES", "DIVIDER", "DATASET", "GEOM", "FANOUT", "DYNAMIC_SETTINGS"}},
        {"destination database",
         true,
         true,
         {"FEAT_TYPES", "DIVIDER", "DATASET", "GEOM", "DB_USER", "FANOUT", "DYNAMIC_SETTINGS"}},
    };
    for (const Case &c : cases) {
        ApplyPromptInput input = destinationInput();
        input.destination = c.destination;
        input.database = c.database;
        const ApplyPrompt prompt(input, promptText);
        EXPECT_EQ(keysOf(prompt.definitionLines()), c.keys) << c.name;
        // Every Yes/No question starts at No; the feature types all chosen.
        EXPECT_EQ(prompt.defaultLines().front(), "DEFAULT_MACRO FEAT_TYPES roads \"land use\" ") << c.name;
        EXPECT_EQ(prompt.defaultLines().size(), c.keys.size() - 1) << c.name;
        for (std::size_t i = 1; i < prompt.defaultLines().size(); ++i)
            EXPECT_TRUE(prompt.defaultLines()[i].ends_with(" No")) << c.name << ": " << prompt.defaultLines()[i];
    }
}

TEST(ApplyPromptTest, writesTheLinesAsThePrompterReadsThem)
{
    ApplyPromptInput input = destinationInput();
    input.database = true;
    const ApplyPrompt prompt(input, promptText);
    EXPECT_EQ(prompt.definitionLines()[0], "GUI LISTBOX FEAT_TYPES roads%\"land use\" p59420");
    EXPECT_EQ(prompt.definitionLines()[1], "GUI DIVIDER");
    EXPECT_EQ(prompt.definitionLines()[2], "GUI CHOICE DATASET Yes%No p59421");
    EXPECT_EQ(prompt.definitionLines().back(), "GUI CHOICE DYNAMIC_SETTINGS Yes%No p59690");
    EXPECT_EQ(prompt.defaultLines()[1], "DEFAULT_MACRO DATASET No");

    // A Yes or No holding a blank travels quoted, and must be answered so.
    const ApplyPrompt german(input, [](unsigned id) { return id == res::Yes ? std::string("Ja bitte") : promptText(id); });
    EXPECT_EQ(german.definitionLines()[2], "GUI CHOICE DATASET \"Ja bitte\"%No p59421");
    EXPECT_EQ(german.read({{"GEOM", "\"Ja bitte\""}}).generalMask, general::Geometry);
}

TEST(ApplyPromptTest, offersAttributeListsOnlyWhereThereIsSomethingToChoose)
{
    ApplyPromptInput input = destinationInput();
    input.hasUserAttributes = true;
    input.pageAttributes = {"NAME", "LANES"};
    input.recordAttributes = {"NAME", "OLD", "LANES"};
    input.pageFormatAttributes = {"shape_type"};
    input.recordFormatAttributes = {"shape_type"};
    input.hasParameters = true;
    input.parameterLines = {{"ENCODING", "GUI CHOICE ENCODING UTF-8%CP1252 Character Encoding"},
                            {"COORDSYS", "GUI OPTIONAL TEXT COORDSYS Coordinate System"}};
    const ApplyPrompt prompt(input, promptText);
    const StringList keys = keysOf(prompt.definitionLines());
    EXPECT_EQ(keys, (StringList{"FEAT_TYPES", "DIVIDER", "DATASET", "GEOM", "FANOUT", "ATTRIBUTES", "DELETE_ATTRIBUTES",
                                "FORMAT_ATTRIBUTES", "PARAMETERS", "DYNAMIC_SETTINGS"}));
    EXPECT_EQ(prompt.definitionLines()[6], "GUI LISTBOX DELETE_ATTRIBUTES OLD p59427");
    EXPECT_EQ(prompt.definitionLines()[8], "GUI LISTBOX PARAMETERS \"Character Encoding\"%\"Coordinate System\" p59430");
    // Parameters have no default line; the lists start empty.
    EXPECT_EQ(prompt.defaultLines().back(), "DEFAULT_MACRO DYNAMIC_SETTINGS No");
    EXPECT_NE(std::find(prompt.defaultLines().begin(), prompt.defaultLines().end(), "DEFAULT_MACRO ATTRIBUTES "),
              prompt.defaultLines().end());

    // A source never lists user attributes.
    input.destination = false;
    const StringList sourceKeys = keysOf(ApplyPrompt(input, promptText).definitionLines());
    EXPECT_EQ(std::count(sourceKeys.begin(), sourceKeys.end(), "ATTRIBUTES"), 0);
    EXPECT_EQ(std::count(sourceKeys.begin(), sourceKeys.end(), "FORMAT_ATTRIBUTES"), 1);
}

TEST(ApplyPromptTest, readsEachAnswerByItsOwnRulesAndLeavesBadOnesEmpty)
{
    ApplyPromptInput input = destinationInput();
    input.database = true;
    input.hasUserAttributes = true;
    input.pageAttributes = {"NAME", "LANES", "TOLL"};
    input.hasParameters = true;
    input.parameterLines = {{"ENCODING", "GUI CHOICE ENCODING UTF-8%CP1252 Character Encoding"},
                            {"CODING", "GUI TEXT CODING Character Encoding"},
                            {"COORDSYS", "GUI OPTIONAL TEXT COORDSYS Coordinate System"}};
    const ApplyPrompt prompt(input, promptText);
    const ApplySelection selection = prompt.read({
        {"FEAT_TYPES", "\"land use\" roads"},
        {"DATASET", "Yes"},
        {"GEOM", "No"},
        {"DB_USER", "Yes"},
        {"FANOUT", "yes"},
        {"DYNAMIC_SETTINGS", "Yes"},
        {"ATTRIBUTES", "NAME%\"LANES\" \"two words\"\nTOLL%%"},
        {"PARAMETERS", "\"Coordinate System\" \"Character Encoding\" Unknown"},
    });
    EXPECT_EQ(selection.targets, (StringList{"land use", "roads"}));
    EXPECT_EQ(selection.generalMask, general::Dataset | general::DatabaseUser | general::AllDynamic);
    // A name the prompter quoted for its blank stays one name.
    EXPECT_EQ(selection.attributes, (StringList{"NAME", "LANES", "two words", "TOLL"}));
    // Of two parameters with one prompt, the later one answers for it.
    EXPECT_EQ(selection.parameters, (std::set<std::string>{"COORDSYS", "CODING"}));
    EXPECT_TRUE(selection.deleteAttributes.empty());

    // Bad or missing answers leave their parts empty.
    EXPECT_TRUE(prompt.read({{"FEAT_TYPES", "\"land use roads"}}).targets.empty());
    EXPECT_TRUE(prompt.read({{"FEAT_TYPES", "roads (x"}}).targets.empty());
    EXPECT_EQ(prompt.read({{"FEAT_TYPES", ""}}).targets, StringList{});
    EXPECT_EQ(prompt.read({{"MERGE", "Yes"}}).generalMask, 0u) << "MERGE was not asked of a destination";
    // Lists that were not asked (nothing was deleted) stand for nothing.
    const ApplySelection unasked = prompt.read({{"DELETE_ATTRIBUTES", "NAME"}, {"DELETE_FORMAT_ATTRIBUTES", "x"}});
    EXPECT_TRUE(unasked.deleteAttributes.empty());
    EXPECT_TRUE(unasked.deleteFormatAttributes.empty());
    input.hasParameters = false;
    EXPECT_TRUE(ApplyPrompt(input, promptText).read({{"PARAMETERS", "\"Coordinate System\""}}).parameters.empty());
}

} // namespace
} // namespace vyr
