// The codec exports as a host calls them: through libvyrguimfc.so and an
// engine string handle.
#include <gtest/gtest.h>

#include "vyr/vyr_session.h"
#include "vyrguimfc/vyrguimfc.h"

#include <cstdlib>
#include <memory>
#include <string>

namespace {

class CodecExports : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { setenv("VYR_CODEPAGE", "CP1252", 1); }

    void set(const std::string &bytes) { VYR_StringSetWithLength(handle_.get(), bytes.data(), bytes.size()); }
    std::string text() const { return {VYR_StringGet(handle_.get()), VYR_StringLength(handle_.get())}; }

    std::unique_ptr<VYRStringObject, void (*)(VYRStringHandle)> handle_{VYR_StringCreate(), VYR_StringDestroy};
};

TEST_F(CodecExports, embeddedNulPassesThroughEveryExport)
{
    const std::string withNul("a\0b c", 5);
    set(withNul);
    VYRWWJDEncode(handle_.get());
    EXPECT_EQ(text(), std::string("a\0b<space>c", 11));
    VYRWWJDDecode(handle_.get());
    EXPECT_EQ(text(), withNul);

    set(withNul);
    EXPECT_TRUE(VYREncodeUserString(handle_.get()));
    EXPECT_EQ(text(), std::string("a\0b<space>c", 11));
    VYRDecodeUserString(handle_.get());
    EXPECT_EQ(text(), withNul);
}

// The library takes its narrow code page from VYR_CODEPAGE on first use.
TEST_F(CodecExports, useTheCodePageOfTheEnvironment)
{
    set("caf\xE9");
    VYRWWJDEncode(handle_.get());
    EXPECT_EQ(text(), "caf<u00e9>");
    set("");
    EXPECT_TRUE(VYREncodeUserString(handle_.get()));
    EXPECT_EQ(text(), "");
}

TEST(EngineStrings, nullHandlesAndZeroLengthsAreHarmless)
{
    EXPECT_TRUE(VYREncodeUserString(nullptr));
    VYRDecodeUserString(nullptr);
    VYRWWJDEncode(nullptr);
    VYRWWJDDecode(nullptr);
    EXPECT_EQ(VYR_StringLength(nullptr), 0u);
    EXPECT_STREQ(VYR_StringGet(nullptr), "");

    VYRStringHandle handle = VYR_StringCreate();
    VYR_StringSet(handle, "something");
    EXPECT_EQ(VYR_StringLength(handle), 9u);
    VYR_StringSetWithLength(handle, "ignored", 0);
    EXPECT_EQ(VYR_StringLength(handle), 0u);
    EXPECT_STREQ(VYR_StringGet(handle), "");
    VYR_StringSet(handle, "again");
    VYR_StringSet(handle, nullptr);
    EXPECT_EQ(VYR_StringLength(handle), 0u);
    VYR_StringDestroy(handle);
}

} // namespace

// A host without a display that did not choose the offscreen platform gets
// false at once and a word on standard error, never a window nobody can
// reach. Each test runs in a process of its own, with no Qt application yet.
TEST(DialogExports, answerFalseAtOnceWithoutADisplay)
{
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        unsetenv(variable);
    std::unique_ptr<IVYRSession, decltype(&VYR_SessionDestroy)> session(VYR_SessionCreate(), VYR_SessionDestroy);
    IVYRFeature *feature = session->createFeature();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(VYRFeatTypeProperties(session.get(), feature, "FORMAT,CSV", nullptr));
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("no display"), std::string::npos) << said;
    session->destroyFeature(feature);
}
