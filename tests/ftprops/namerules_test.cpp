#include "ftprops/namerules.h"
#include "ftprops/vyrobjftpropsformatinfo.h"

#include "support/countingsession.h"
#include "support/scopedenvironment.h"
#include "util/codepage.h"
#include "util/listpacking.h"

#include "vyr/IVYRFeature.h"
#include "vyr/IVYRSession.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <thread>

namespace vyr {
namespace {

TEST(NameRulesTest, LegaliseByLengthCaseCharactersAndUniqueness)
{
    struct Case
    {
        const char *name;
        const char *invalid;
        const char *caseRule;
        StringSet reserved;
        StringSet taken;
        unsigned maxLength;
        bool includesPrefix;
        const char *expected;
    };
    const Case cases[] = {
        {"Roads", "", "", {}, {"Roads"}, 0, false, "Roads00"},
        {"Roads", "", "", {}, {"Roads"}, 6, false, "Road00"},
        {"Roads", "", "", {}, {"Roads", "Roads00", "Roads01"}, 0, false, "Roads02"},
        {"owner.averyverylongname", "", "", {}, {}, 8, false, "owner.averyver"},
        {"owner.averyverylongname", "", "", {}, {}, 8, true, "owner.av"},
        {"table", "", "", {"TABLE"}, {}, 0, false, "table00"},
        {"my road-1", " -", "", {}, {}, 0, false, "my_road_1"},
        {"1abc", "", "UPPER_FIRST_ALPHA", {}, {}, 0, false, "Q_1ABC"},
        {"abc", "", "UPPER_FIRST_ALPHA", {}, {}, 0, false, "ABC"},
        {"1abcdef", "", "UPPER_FIRST_ALPHA", {}, {}, 6, false, "Q_1ABC"},
        {"9x", "", "ANY_FIRST_NONNUMERIC", {}, {}, 0, false, "_9x"},
        {"Roads", "", "LOWER", {}, {}, 0, false, "roads"},
        {"roads", "", "FIRST_UPPER", {}, {}, 0, false, "Roads"},
        {"ROADS", "", "FIRST_LOWER", {}, {}, 0, false, "rOADS"},
        {"Roads", "", "upper", {}, {}, 0, false, "Roads"},
        {"x", "", "", {}, {"x"}, 1, false, "x"},
        {"ab", "", "", {}, {"ab", "a00", "a01"}, 3, false, "a02"},
        {"ab", "", "", {}, {"a"}, 1, false, "a"},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(LegaliseName(c.name, c.invalid, c.caseRule, c.reserved, c.taken, c.maxLength, c.includesPrefix, '_'),
                  c.expected)
            << c.name << " / " << c.caseRule << " / " << c.maxLength;
    }
}

TEST(NameRulesTest, NumberedNamesGiveUpWhenNoNumberFitsAndScriptNamesRenumber)
{
    StringSet taken;
    for (int i = 0; i < 100; ++i)
        taken.insert(std::string(i < 10 ? "0" : "") + std::to_string(i));
    taken.insert("ab");
    EXPECT_EQ(MakeUniqueNumberedName("ab", 2, taken, {}), "");
    EXPECT_EQ(MakeUniqueNumberedName("ab", 0, taken, {}), "ab00");
    EXPECT_EQ(MakeUniqueNumberedName("ab", 3, taken, {}), "a00");

    // Script names count from two after dropping an old number.
    const StringSet scripts{"Roads", "Roads_7", "Roads_2", "x_y"};
    EXPECT_EQ(MakeUniqueScriptName("Roads", scripts), "Roads_3");
    EXPECT_EQ(MakeUniqueScriptName("Roads_7", scripts), "Roads_3");
    EXPECT_EQ(MakeUniqueScriptName("x_y", scripts), "x_y_2");
    EXPECT_EQ(MakeUniqueScriptName("free", scripts), "free");
}

TEST(NameRulesTest, UnitsOfSeveralBytesAreNeverChanged)
{
    setNarrowCodePage("UTF-8");
    // "Straße-ä" with ß and ä as two-byte UTF-8 units; the invalid byte list
    // holds a byte of ß.
    EXPECT_EQ(LegaliseName("stra\xc3\x9f"
                           "e-\xc3\xa4",
                           "-\x9f", "UPPER", {}, {}, 0, false, '_'),
              "STRA\xc3\x9f"
              "E_\xc3\xa4");
    EXPECT_EQ(LegaliseName("\xc3\xa4\xc3\xb6\xc3\xbc\xc3\x9f", "", "", {}, {}, 3, false, '_'),
              "\xc3\xa4\xc3\xb6\xc3\xbc");
    EXPECT_EQ(ApplyNameCase("\xc3\xa4x", "FIRST_UPPER", 0), "\xc3\xa4x");
    setNarrowCodePage("CP932");
    // A Shift-JIS character whose second byte is "\\" and "a"-like bytes.
    EXPECT_EQ(LegaliseName("\x83\x5c"
                           "a\\b",
                           "\\", "UPPER", {}, {}, 0, false, '_'),
              "\x83\x5c"
              "A_B");
    // In a single-byte code page the same lead bytes still pair with the
    // byte after them (never the last byte): "\xe9a" stays as it is.
    setNarrowCodePage("CP1252");
    EXPECT_EQ(ApplyNameCase("\xe9"
                            "ab\xe9",
                            "UPPER", 0),
              "\xe9"
              "aB\xe9");
    EXPECT_EQ(LegaliseName("x\xb0-\xe9-", "-", "", {}, {}, 0, false, '_'), "x\xb0_\xe9-");
    resetNarrowCodePage();
}

// An engine feature whose validation "script" is a function of the name,
// recording every command it is asked to perform.
class ScriptFeature final : public IVYRFeature
{
public:
    std::function<std::string(const std::string &)> script;
    std::vector<std::string> commands;
    std::string featureType;

    bool getAttribute(const char *, IVYRString &) const override { return false; }
    void setAttribute(const char *, const char *) override {}
    void setOrderedAttribute(const char *, const char *) override {}
    void removeAttribute(const char *) override {}
    void getAllAttributeNames(IVYRStringArray &) const override {}
    void getOrderedAttributeNames(IVYRStringArray &) const override {}
    void getListAttribute(const char *, IVYRStringArray &) const override {}
    void setListAttribute(const char *, const IVYRStringArray &) override {}
    void removeListAttribute(const char *) override {}
    const char *getFeatureType() const override { return featureType.c_str(); }
    void setFeatureType(const char *name) override { featureType = name; }
    bool performFunction(const char *function, IVYRString &) override
    {
        commands.emplace_back(function);
        if (script && commands.back().find("source") != std::string::npos)
            featureType = script(featureType);
        return true;
    }
};

class ScriptSession final : public test::CountingSession
{
public:
    ScriptFeature feature;

    IVYRFeature *createFeature() override
    {
        ++featuresOut;
        return &feature;
    }
    void destroyFeature(IVYRFeature *&given) override
    {
        --featuresOut;
        given = nullptr;
    }
};

TEST(NameRulesTest, ValidationScriptRunsAgainOnAUniqueNameButNotForever)
{
    ScriptSession session;
    session.feature.script = [](const std::string &name) { return name; };
    EXPECT_EQ(RunValidationScript(session, "xlsx_sheet_names.tcl", "Roads", {"Roads"}), "Roads_2");
    ASSERT_EQ(session.feature.commands.size(), 3u);
    EXPECT_NE(session.feature.commands[0].find("set LH_Clear yes; source {"), std::string::npos);
    EXPECT_NE(session.feature.commands[0].find("metafile/xlsx_sheet_names.tcl}})"), std::string::npos);
    EXPECT_NE(session.feature.commands[1].find("set LH_Clear no;"), std::string::npos);
    EXPECT_EQ(session.feature.commands[2], "@TCL(catch {unset LH_Clear})");
    EXPECT_EQ(session.featuresOut, 0);
    EXPECT_EQ(session.stringsOut, 0);

    ScriptSession stubborn;
    stubborn.feature.script = [](const std::string &) { return std::string("Always"); };
    EXPECT_EQ(RunValidationScript(stubborn, "xlsx_sheet_names.tcl", "x", {"Always", "Always_2"}), "Always_3");
    EXPECT_EQ(stubborn.feature.commands.size(), 1001u) << "it stops after a thousand passes";

    // The time limit holds for the whole resolution, not for each pass.
    test::ScopedEnvironment env;
    env.set("VYR_TCL_SECONDS", "1");
    ScriptSession slow;
    slow.feature.script = [](const std::string &) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        return std::string("Always");
    };
    const std::string given = RunValidationScript(slow, "xlsx_sheet_names.tcl", "x", {"Always"}).value_or("");
    EXPECT_EQ(given, "Always_2") << "what it leaves is never a taken name";
    EXPECT_LE(slow.feature.commands.size(), 12u);
}

TEST(NameRulesTest, ResolutionByAllowedNamesScriptOrRules)
{
    const VYRObjFTPropsFormatInfo gpx("ALLOWED_FEAT_TYPES,\"waypoints,routes,tracks\"", nullptr);
    EXPECT_EQ(ResolveFeatureTypeName(gpx, " routes ", {}, nullptr), "routes");
    EXPECT_EQ(ResolveFeatureTypeName(gpx, "routes", {"routes", "waypoints"}, nullptr), "tracks");
    EXPECT_EQ(ResolveFeatureTypeName(gpx, "x", {"waypoints", "routes", "tracks"}, nullptr), "");

    const VYRObjFTPropsFormatInfo dbase("FEATURE_TYPE_CASE,UPPER,FEATURE_TYPE_LENGTH,8,"
                                        "FEATURE_TYPE_INVALID_CHARS,\" -\",FEATURE_TYPE_RESERVED_WORDS,TABLE",
                                        nullptr);
    EXPECT_EQ(ResolveFeatureTypeName(dbase, "  my road-network  ", {}, nullptr), "MY_ROAD_");
    EXPECT_EQ(ResolveFeatureTypeName(dbase, "table", {}, nullptr), "TABLE00");
    EXPECT_EQ(ResolveFeatureTypeName(dbase, "   ", {}, nullptr), "");

    ScriptSession session;
    session.feature.script = [](const std::string &name) { return name.substr(0, 3); };
    const VYRObjFTPropsFormatInfo scripted("FEAT_TYPE_VALIDATION_SCRIPT,xlsx_sheet_names.tcl", nullptr);
    EXPECT_EQ(ResolveFeatureTypeName(scripted, "Roads", {"Roa"}, &session), "Roa_2");
}

// A capability file comes from anywhere: a script it names runs only as a
// plain file of the installation's metafile/ folder; any other is not run,
// and the format's own name rules apply as if it named none.
TEST(NameRulesTest, OnlyInstalledScriptsRunOnNames)
{
    const char *refused[] = {
        "xlsx_sheet_names.tcl}; exec sh -c {id > /tmp/x}; set y {",
        "../../elsewhere/evil.tcl",
        "/etc/passwd",
        "..",
        "[exec id].tcl",
        "$env(HOME).tcl",
        "xlsx_sheet_names.tcl\\",
        "no_such_script.tcl",
    };
    for (const char *script : refused) {
        ScriptSession session;
        session.feature.script = [](const std::string &) { return std::string("ScriptRan"); };
        const VYRObjFTPropsFormatInfo format(
            csvJoin({"FEATURE_TYPE_CASE", "UPPER", "FEAT_TYPE_VALIDATION_SCRIPT", script}, ','), nullptr);
        EXPECT_EQ(ResolveFeatureTypeName(format, "roads", {}, &session), "ROADS") << script;
        EXPECT_EQ(ResolveFeatureTypeName(format, "roads", {}, nullptr), "ROADS") << script;
        // Nor does a caller that asks for the script by itself run it.
        std::string refusal;
        EXPECT_EQ(RunValidationScript(session, script, "roads", {}, &refusal), std::nullopt) << script;
        EXPECT_FALSE(refusal.empty()) << script;
        EXPECT_TRUE(session.feature.commands.empty()) << script;
    }
}

TEST(NameRulesTest, AttributeNamesKeepListBracketsAndFitTheFormat)
{
    const VYRObjFTPropsFormatInfo dbase("ATTR_CASE,UPPER,MAX_ATTR_LENGTH,10,ATTR_NAME_INVALID_CHARS,\"{} .\","
                                        "DEST_ILLEGAL_ATTR_LIST,\"SHAPE,FID\"",
                                        nullptr);
    struct Case
    {
        const char *name;
        StringSet taken;
        const char *expected;
    };
    const Case cases[] = {
        {"road name", {}, "ROAD_NAME"}, {"parts{}.x", {}, "PARTS{}_X"},  {"averyverylongname", {}, "AVERYVERYL"},
        {"shape", {}, "SHAPE00"},       {"width", {"WIDTH"}, "WIDTH00"}, {"abcdefghij", {"ABCDEFGHIJ"}, "ABCDEFGH00"},
    };
    for (const Case &c : cases)
        EXPECT_EQ(LegaliseAttributeName(dbase, c.name, c.taken), c.expected) << c.name;

    // A capability file may spell an illegal name in lower case; it still
    // matches a name in any case.
    const VYRObjFTPropsFormatInfo lower("ATTR_CASE,ANYFIRSTNONNUMERIC,DEST_ILLEGAL_ATTR_LIST,\"Shape,fid\"", nullptr);
    EXPECT_EQ(LegaliseAttributeName(lower, "1st", {}), "_1st");
    EXPECT_EQ(LegaliseAttributeName(lower, "SHAPE", {}), "SHAPE00");
    EXPECT_EQ(LegaliseAttributeName(lower, "Fid", {}), "Fid00");
    EXPECT_EQ(LegaliseAttributeName(lower, "fids", {}), "fids");
}

} // namespace
} // namespace vyr
