#include "guidefinition.h"

#include <gtest/gtest.h>

namespace vyr::services {
namespace {

// The lines the dialogs write, as the apply-to-others prompt and the canned
// prompts build them.
const char kDefinition[] = "GUI TITLE Apply to Other Feature Types\n"
                           "GUI HELP \"/opt/vyr/help/VYRLoomhouse.chm#x.htm\"\n"
                           "DEFAULT_MACRO FEAT_TYPES roads \"land use\" \n"
                           "DEFAULT_MACRO DATASET No\n"
                           "GUI LISTBOX FEAT_TYPES roads%\"land use\"%rivers Feature types to change:\n"
                           "GUI DIVIDER\n"
                           "GUI CHOICE DATASET Yes%No Apply the dataset\n"
                           "GUI SOMETHING_NEW X Y Z\n"
                           "not a definition line\n"
                           "GUI SELECTION_BOX_ONLY \"a b\"%c Pick some\n"
                           "DEFAULT_MACRO SELECTION_BOX_ONLY c\n"
                           "DEFAULT_MACRO ICONMAC /icons/old.png\n"
                           "GUI OPTIONAL ICONPICKONLY ICONMAC\n";

TEST(GuiDefinitionTest, ReadsEveryLineFormAndSkipsUnknownOnes)
{
    const GuiDefinition definition = parseGuiDefinition(kDefinition);
    EXPECT_EQ(definition.title, "Apply to Other Feature Types");
    EXPECT_EQ(definition.help, "/opt/vyr/help/VYRLoomhouse.chm#x.htm");
    ASSERT_EQ(definition.prompts.size(), 5u);

    const GuiPrompt &list = definition.prompts[0];
    EXPECT_EQ(list.kind, GuiPromptKind::ListBox);
    EXPECT_EQ(list.key, "FEAT_TYPES");
    EXPECT_EQ(list.choices, (StringList{"roads", "land use", "rivers"}));
    EXPECT_EQ(list.prompt, "Feature types to change:");
    EXPECT_EQ(defaultValues(definition, list), (StringList{"roads", "land use"}));

    EXPECT_EQ(definition.prompts[1].kind, GuiPromptKind::Divider);
    const GuiPrompt &choice = definition.prompts[2];
    EXPECT_EQ(choice.kind, GuiPromptKind::Choice);
    EXPECT_EQ(defaultValues(definition, choice), (StringList{"No"}));

    const GuiPrompt &box = definition.prompts[3];
    EXPECT_EQ(box.kind, GuiPromptKind::SelectionBox);
    EXPECT_EQ(box.key, "SELECTION_BOX_ONLY");
    EXPECT_EQ(box.prompt, "Pick some");
    EXPECT_EQ(defaultValues(definition, box), (StringList{"c"}));

    const GuiPrompt &icon = definition.prompts[4];
    EXPECT_EQ(icon.kind, GuiPromptKind::IconPick);
    EXPECT_TRUE(icon.optional);
    EXPECT_EQ(defaultValues(definition, icon), (StringList{"/icons/old.png"}));
}

TEST(GuiDefinitionTest, AnswersComeInTheShapeTheDialogsReadBack)
{
    const GuiDefinition definition = parseGuiDefinition(kDefinition);
    const std::map<std::string, StringList> answers{
        {"FEAT_TYPES", {"land use", "rivers"}},
        {"DATASET", {"Yes"}},
        {"SELECTION_BOX_ONLY", {"a b", "c"}},
        {"ICONMAC", {"/icons/new.png"}},
    };
    EXPECT_EQ(writeGuiAnswers(definition, answers),
              "FEAT_TYPES\n\"land use\" rivers\n"
              "DATASET\nYes\n"
              "a b\nc\n"
              "ICONMAC\n/icons/new.png\n");
    EXPECT_EQ(writeGuiAnswers(definition, {}), "FEAT_TYPES\n\nDATASET\n\nICONMAC\n\n");
}

TEST(GuiDefinitionTest, QuotedChoicesAnswerAsTheyWereWritten)
{
    const GuiDefinition definition = parseGuiDefinition("GUI CHOICE K \"Ja bitte\"%Nein Apply\n"
                                                        "DEFAULT_MACRO K \"Ja bitte\"\n");
    ASSERT_EQ(definition.prompts.size(), 1u);
    EXPECT_EQ(defaultValues(definition, definition.prompts[0]), (StringList{"Ja bitte"}));
    EXPECT_EQ(writeGuiAnswers(definition, {{"K", {"Ja bitte"}}}), "K\n\"Ja bitte\"\n");
}

// The first is what a list of no feature types looks like once joined into a
// line: two blanks after the key.
TEST(GuiDefinitionTest, EmptyChoiceListsAndBrokenLinesGiveNoChoices)
{
    for (const char *text :
         {"GUI LISTBOX FEAT_TYPES  Apply to these:\nDEFAULT_MACRO FEAT_TYPES \n",
          "GUI\nGUI LISTBOX\nDEFAULT_MACRO\nGUI ICONPICKONLY\r\nGUI CHOICE K\nDEFAULT_MACRO K \"unclosed\n"}) {
        const GuiDefinition definition = parseGuiDefinition(text);
        ASSERT_EQ(definition.prompts.size(), 1u) << text;
        EXPECT_TRUE(definition.prompts[0].choices.empty()) << text;
        EXPECT_TRUE(defaultValues(definition, definition.prompts[0]).empty()) << text;
    }
    EXPECT_EQ(parseGuiDefinition("GUI LISTBOX FEAT_TYPES  Apply to these:\n").prompts.at(0).prompt, "Apply to these:");
}

} // namespace
} // namespace vyr::services
