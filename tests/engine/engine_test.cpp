#include "stringobjects/vyrrwstringarrayimp.h"
#include "stringobjects/vyrrwstringimp.h"

#include "support/scopedenvironment.h"
#include "support/scratchdirectory.h"

#include "vyr/IVYRFeature.h"
#include "vyr/vyr_featurefile.h"
#include "vyr/vyr_session.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

namespace {

class EngineTest : public ::testing::Test
{
protected:
    ~EngineTest() override
    {
        for (IVYRFeature *&feature : m_features)
            m_session->destroyFeature(feature);
    }
    IVYRFeature &newFeature()
    {
        m_features.push_back(m_session->createFeature());
        return *m_features.back();
    }
    static std::string value(const IVYRFeature &feature, const char *name)
    {
        VYRRWStringImp text;
        return feature.getAttribute(name, text) ? std::string(text.view()) : std::string("(absent)");
    }
    // `feature` saved to `path` and read back into a new feature.
    IVYRFeature &savedAndRead(const IVYRFeature &feature, const std::string &path)
    {
        VYRRWStringImp error;
        EXPECT_TRUE(VYR_FeatureSaveJson(&feature, path.c_str(), &error)) << error.c_str();
        IVYRFeature &copy = newFeature();
        EXPECT_TRUE(VYR_FeatureLoadJson(&copy, path.c_str(), &error)) << error.c_str();
        return copy;
    }
    static std::vector<std::string> texts(const VYRRWStringArrayImp &array)
    {
        std::vector<std::string> all;
        for (std::size_t i = 0; i < array.entries(); ++i)
            all.emplace_back(array.elementAt(i));
        return all;
    }

    std::unique_ptr<IVYRSession, decltype(&VYR_SessionDestroy)> m_session{VYR_SessionCreate(), VYR_SessionDestroy};
    std::vector<IVYRFeature *> m_features;
};

TEST_F(EngineTest, TclFunctionsReadAndChangeTheFeature)
{
    vyr::test::ScopedEnvironment env;
    env.set("VYR_TCL_SECONDS", "1");
    IVYRFeature &feature = newFeature();
    feature.setFeatureType("roads");
    feature.setAttribute("lanes", "2");
    VYRRWStringImp result;
    struct Case
    {
        const char *function;
        bool ok;
        const char *result;
    };
    const Case cases[] = {
        {"@TCL(vyr_feature_type)", true, "roads"},
        {"@TCL(vyr_feature_type [string toupper [vyr_feature_type]])", true, "ROADS"},
        {"@TCL(expr {[vyr_attribute lanes] * 2})", true, "4"},
        {"@TCL(vyr_attribute width 7; vyr_attribute_exists width)", true, "1"},
        {"@TCL(vyr_remove_attribute width; vyr_attribute_exists width)", true, "0"},
        {"@TCL(vyr_attribute missing)", false, "no attribute \"missing\""},
        {"@TCL(error {broken script})", false, "broken script"},
        {"@TCL(catch {error x})", true, "1"},
        {"@TCL(exit 3)", false, "invalid command name \"exit\""},
        {"@TCL(set kept here)", true, "here"},
        {"@TCL(set kept)", true, "here"},
        {"vyr_feature_type", false, ""},
        {"@TCL(unbalanced {)", false, "missing close-brace"},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(feature.performFunction(c.function, result), c.ok) << c.function;
        EXPECT_EQ(std::string(result.view()), c.result) << c.function;
    }
    EXPECT_EQ(std::string(feature.getFeatureType()), "ROADS");
    EXPECT_EQ(value(feature, "width"), "(absent)");
}

// Functions and validation scripts come with capability files from
// anywhere: they compute and read the feature, and reach nothing else.
TEST_F(EngineTest, TclFunctionsRunInASafeInterpreter)
{
    IVYRFeature &feature = newFeature();
    feature.setFeatureType("a:b");
    VYRRWStringImp result;
    for (const char *command : {"exec", "open", "file", "socket", "load", "cd", "pwd", "glob", "exit", "interp", "chan",
                                "gets", "puts", "after", "vwait", "update"}) {
        const std::string function = std::string("@TCL(") + command + " x)";
        EXPECT_FALSE(feature.performFunction(function.c_str(), result)) << command;
        EXPECT_EQ(std::string(result.view()), std::string("invalid command name \"") + command + "\"");
    }
    EXPECT_TRUE(feature.performFunction("@TCL(info exists env)", result));
    EXPECT_EQ(std::string(result.view()), "0") << "the environment is not visible";

    const std::string installed = std::string(VYR_TEST_STAGE_DIR) + "/metafile/xlsx_sheet_names.tcl";
    const std::string outside = std::string(VYR_TEST_STAGE_DIR) + "/metafile/../formats/csv.fmt";
    for (const std::string &path : {outside, std::string("/etc/hostname"), std::string("/nonexistent.tcl")}) {
        const std::string function = "@TCL(source {" + path + "})";
        EXPECT_FALSE(feature.performFunction(function.c_str(), result)) << path;
        EXPECT_NE(std::string(result.view()).find("is no script of the installation"), std::string::npos) << path;
    }
    const std::string function = "@TCL(source {" + installed + "})";
    EXPECT_TRUE(feature.performFunction(function.c_str(), result)) << result.c_str();
    EXPECT_STREQ(feature.getFeatureType(), "a_b") << "an installed script runs";
}

// One feature's functions share one time limit: a job of many functions,
// such as a name resolution, ends within it, not within many times it.
TEST_F(EngineTest, AFeaturesFunctionsShareOneTimeLimit)
{
    vyr::test::ScopedEnvironment env;
    env.set("VYR_TCL_SECONDS", "1");
    IVYRFeature &feature = newFeature();
    VYRRWStringImp result;
    EXPECT_FALSE(feature.performFunction("@TCL(while 1 {set x 1})", result));
    EXPECT_EQ(std::string(result.view()), "time limit exceeded");
    EXPECT_FALSE(feature.performFunction("@TCL(set x 2)", result)) << "the limit is spent";
    EXPECT_TRUE(newFeature().performFunction("@TCL(set x 3)", result)) << "another feature has its own";
    EXPECT_EQ(std::string(result.view()), "3");
}

using Texts = std::vector<std::string>;

TEST_F(EngineTest, AttributesKeepTheirOrderAndListsStandApart)
{
    IVYRFeature &feature = newFeature();
    feature.setAttribute("b", "1");
    feature.setOrderedAttribute("z", "2");
    feature.setOrderedAttribute("a", "3");
    feature.setAttribute("b", "changed");
    feature.setOrderedAttribute("z", "4");
    VYRRWStringArrayImp names;
    feature.getAllAttributeNames(names);
    EXPECT_EQ(texts(names), (Texts{"b", "z", "a"}));
    feature.getOrderedAttributeNames(names);
    EXPECT_EQ(texts(names), (Texts{"a", "z"}));
    feature.removeAttribute("a");
    feature.getOrderedAttributeNames(names);
    EXPECT_EQ(texts(names), Texts{"z"});

    VYRRWStringArrayImp elements;
    elements.append("x");
    feature.setListAttribute("list", elements);
    feature.getListAttribute("absent", elements);
    EXPECT_EQ(elements.entries(), 0u);
    feature.getListAttribute("list", elements);
    EXPECT_EQ(texts(elements), Texts{"x"});
    EXPECT_EQ(value(feature, "list"), "(absent)");
}

TEST_F(EngineTest, FeatureFilesRoundTrip)
{
    vyr::test::ScratchDirectory dir;
    IVYRFeature &feature = newFeature();
    feature.setFeatureType("Straßen");
    feature.setAttribute("*NAME", "char(40)");
    feature.setOrderedAttribute("NAME", "vyr_char(40)");
    VYRRWStringArrayImp elements;
    elements.append("a b");
    elements.append("");
    feature.setListAttribute("*vyr_parameter_name", elements);
    IVYRFeature &copy = savedAndRead(feature, dir.path() + "/feature.json");
    EXPECT_STREQ(copy.getFeatureType(), "Straßen");
    EXPECT_EQ(value(copy, "*NAME"), "char(40)");
    VYRRWStringArrayImp names;
    copy.getOrderedAttributeNames(names);
    EXPECT_EQ(texts(names), Texts{"NAME"});
    copy.getListAttribute("*vyr_parameter_name", elements);
    EXPECT_EQ(texts(elements), (Texts{"a b", ""}));

    savedAndRead(copy, dir.path() + "/again.json");
    EXPECT_EQ(dir.read("feature.json"), dir.read("again.json"));
}

// Files written the way people write them come back as they were: a save
// changes only the lines of what changed.
TEST_F(EngineTest, TheExampleFeatureFilesAreWrittenAsTheyAre)
{
    for (const auto &entry : std::filesystem::directory_iterator(std::string(VYR_TEST_EXAMPLES_DIR) + "/schemas")) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        IVYRFeature &feature = newFeature();
        ASSERT_TRUE(VYR_FeatureReadJson(&feature, text.data(), text.size(), "example", nullptr)) << entry.path();
        VYRRWStringImp written;
        ASSERT_TRUE(VYR_FeatureWriteJson(&feature, &written));
        EXPECT_EQ(written.view(), text) << entry.path();
    }
}

// A byte that is no UTF-8 in a UTF-8 code page came from a stranger's
// capability file: the save still writes a file every JSON reader takes.
TEST_F(EngineTest, BytesThatAreNoUtf8AreSavedAsReplacementCharacters)
{
    // The engine reads its code page once, on first use, in this process of
    // its own.
    vyr::test::ScopedEnvironment environment;
    environment.set("VYR_CODEPAGE", "UTF-8");
    vyr::test::ScratchDirectory dir;
    IVYRFeature &feature = newFeature();
    feature.setFeatureType("caf\xE9");
    feature.setAttribute("*vyr_geometry{0}", "\xFF\xFEline");
    const IVYRFeature &copy = savedAndRead(feature, dir.path() + "/feature.json");
    EXPECT_STREQ(copy.getFeatureType(), "caf\xEF\xBF\xBD");
    EXPECT_EQ(value(copy, "*vyr_geometry{0}"), "\xEF\xBF\xBD\xEF\xBF\xBDline");

    // Two names that differ only there would be written alike: the save is
    // refused with the reason, and no file is left that cannot be read back.
    feature.setAttribute("a\xFF", "1");
    feature.setAttribute("a\xFE", "2");
    const std::string refused = dir.path() + "/refused.json";
    VYRRWStringImp error;
    VYRRWStringImp text;
    EXPECT_FALSE(VYR_FeatureSaveJson(&feature, refused.c_str(), &error));
    EXPECT_NE(std::string(error.view()).find("are both written"), std::string::npos) << error.c_str();
    EXPECT_FALSE(VYR_FeatureWriteJson(&feature, &text));
    EXPECT_FALSE(std::filesystem::exists(refused));
}

TEST_F(EngineTest, MalformedFeatureFilesAreRefusedWithTheirPlace)
{
    struct Case
    {
        const char *text;
        const char *message;
    };
    const Case cases[] = {
        {"{\"feature_type\": \"x\",\n \"attributes\": {\"a\": 1}}", "t.json:2:22: attribute \"a\" must be a text"},
        {"{\"feature_type\": \"x\",\n \"attributes\": [", "t.json:2:17: not valid JSON: the text ends too early"},
        {"{\"feature_type\": x}", "t.json:1:18: not valid JSON: unexpected 'x'"},
        {"[]", "t.json:1:1: a feature file holds one JSON object"},
        {"{}", "t.json:1:1: \"feature_type\" is missing"},
        {"{\"feature_type\": \"x\", \"attribute_order\": [\"a\", \"nope\"]}",
         "t.json:1:43: \"attribute_order\" names \"a\", which is no attribute"},
        {"{\"feature_type\": \"x\", \"lists\": {\"l\": \"text\"}}", "t.json:1:38: list \"l\" must be a list of texts"},
        {"{\"feature_type\": \"x\", \"lists\": []}", "t.json:1:32: \"lists\" must be an object of lists"},
        {"", "t.json:1:1: not valid JSON: the text ends too early"},
        {"{\"feature_type\": \"x\",\n \"attributes\": {\"a\": -5e400}}",
         "t.json:2:22: not valid JSON: the number -5e400 is too large"},
        {"{\"feature_type\": \"x\", \"attributes\": {\"a\": \"1\"},\n \"attributes\": {\"b\": \"2\"}}",
         "\"attributes\" is given twice"},
        {"{\"feature_type\": \"x\", \"attributes\": {\"a\": \"1\", \"a\": \"2\"}}", "attribute \"a\" is given twice"},
        {"{\"feature_type\": \"x\", \"lists\": {\"l\": [], \"l\": [\"b\"]}}", "list \"l\" is given twice"},
        // The key given twice is named, not the fault of its first value;
        // of two faulty lists the first in byte order.
        {"{\"feature_type\": \"x\", \"attributes\": {\"a\": 1, \"a\": \"2\"}}", "attribute \"a\" is given twice"},
        {"{\"feature_type\": \"x\", \"lists\": {\"m\": 1, \"l\": 2}}", "t.json:1:46: list \"l\" must be a list of texts"},
        // What comes first in the file is told first.
        {"{\"feature_type\": \"x\", \"feature_type\": \"y\" oops", "\"feature_type\" is given twice"},
        {"{\"feature_type\": \"\\uDC00\"}", "t.json:1:24: not valid JSON: unexpected '0'"},
        {"{\"feature_type\": \"caf\xE9\"}", "t.json:1:23: not valid JSON: unexpected '\"'"},
        {"{\"feature_type\": 1, \"n\": 123456789012345678901234}", "t.json:1:18: \"feature_type\" must be a text"},
    };
    IVYRFeature &feature = newFeature();
    feature.setFeatureType("kept");
    for (const Case &c : cases) {
        VYRRWStringImp error;
        EXPECT_FALSE(VYR_FeatureReadJson(&feature, c.text, std::strlen(c.text), "t.json", &error)) << c.text;
        EXPECT_NE(std::string(error.view()).find(c.message), std::string::npos) << error.c_str();
    }
    EXPECT_STREQ(feature.getFeatureType(), "kept");
    VYRRWStringImp error;
    EXPECT_FALSE(VYR_FeatureLoadJson(&feature, "/nonexistent/f.json", &error));
    EXPECT_EQ(std::string(error.view()), "/nonexistent/f.json: No such file or directory");
}

// A byte order mark, integers beyond 64 bits and a null after the text (a
// host passing the length of a C string with its terminator) were always
// taken.
TEST_F(EngineTest, FilesWithAByteOrderMarkHugeIntegersOrATrailingNullAreRead)
{
    const std::string attributes = "\"attributes\": {\"a\": \"1\", \"b\": \"q\\\"\\u0041\"}";
    const std::string texts[] = {
        "\xEF\xBB\xBF{\"feature_type\": \"x\", " + attributes + "}",
        "{\"feature_type\": \"x\", \"size\": 123456789012345678901234, " + attributes + "}",
        "{\"feature_type\": \"x\", " + attributes + "}" + std::string(1, '\0'),
    };
    for (const std::string &text : texts) {
        IVYRFeature &feature = newFeature();
        VYRRWStringImp error;
        ASSERT_TRUE(VYR_FeatureReadJson(&feature, text.data(), text.size(), "t.json", &error)) << error.c_str();
        EXPECT_STREQ(feature.getFeatureType(), "x") << text;
        EXPECT_EQ(value(feature, "a"), "1") << text;
        EXPECT_EQ(value(feature, "b"), "q\"A") << text;
    }
}

TEST_F(EngineTest, NestingIsRefusedJustPastItsLimit)
{
    // The top object is one level, "extra" the rest.
    const auto nested = [](std::size_t levels) {
        return "{\"feature_type\": \"x\", \"extra\": " + std::string(levels - 1, '[') + std::string(levels - 1, ']')
            + "}";
    };
    IVYRFeature &feature = newFeature();
    VYRRWStringImp error;
    const std::string deepest = nested(256);
    EXPECT_TRUE(VYR_FeatureReadJson(&feature, deepest.data(), deepest.size(), "t.json", &error)) << error.c_str();
    const std::string tooDeep = nested(257);
    EXPECT_FALSE(VYR_FeatureReadJson(&feature, tooDeep.data(), tooDeep.size(), "t.json", &error));
    EXPECT_EQ(std::string(error.view()), "t.json: arrays and objects nest more than 256 levels deep");
}

// The session knows the installation's example formats (VYR_HOME is the stage).
TEST_F(EngineTest, FormatPropertiesComeFromTheInstalledCapabilityFiles)
{
    const auto askType = [this](const char *format) {
        VYRRWStringArrayImp query;
        query.append(format);
        if (!m_session->getProperties(kVyrSessionPropFormatInfo, query))
            return std::string("(unknown)");
        for (std::size_t i = 0; i + 1 < query.entries(); i += 2) {
            if (std::string_view(query.elementAt(i)) == "FORMAT_TYPE")
                return std::string(query.elementAt(i + 1));
        }
        return std::string("(no type)");
    };
    EXPECT_EQ(askType("POSTGRES"), "DATABASE");
    EXPECT_EQ(askType("SHAPEFILE"), "FILE");
    EXPECT_EQ(askType("postgres"), "(unknown)");
    VYRRWStringArrayImp query;
    query.append("POSTGRES");
    EXPECT_FALSE(m_session->getProperties("another_category", query));
    EXPECT_EQ(query.entries(), 0u);
}

} // namespace
