// The data source pickers: what reaches the directory dialog library and
// what comes back into the caller's handle, with a stand-in library that
// records its calls.
#include <gtest/gtest.h>

#include "frame/esripickers.h"
#include "vyrguimfc/vyrguimfc.h"

#include <dlfcn.h>

#include <cstring>
#include <memory>
#include <string>

namespace {

struct FakeDirDialogCall
{
    int calls;
    char title[512];
    char prompt[512];
    char pathIn[300];
    void *parent;
    int option;
};

using Handle = std::unique_ptr<VYRStringObject, void (*)(VYRStringHandle)>;

class GeodatabasePicker : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_library = ::dlopen(VYR_FAKE_DIRDIALOG, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(m_library, nullptr) << ::dlerror();
        m_answer = reinterpret_cast<void (*)(int, const char *, int)>(::dlsym(m_library, "fake_dirDialog_answer"));
        m_lastCall = reinterpret_cast<const FakeDirDialogCall *(*)()>(::dlsym(m_library, "fake_dirDialog_lastCall"));
        ASSERT_TRUE(m_answer && m_lastCall);
    }
    void TearDown() override { ::dlclose(m_library); }

    bool pick(const std::string &start, bool allowNew, void *parent = nullptr)
    {
        set(start);
        const auto texts = [] { return vyr::GeodatabasePickerTexts{"Title", "Prompt"}; };
        return vyr::selectGeodatabaseWith(VYR_FAKE_DIRDIALOG, texts, m_handle.get(), allowNew, parent);
    }
    void set(const std::string &bytes) { VYR_StringSetWithLength(m_handle.get(), bytes.data(), bytes.size()); }
    std::string text() const { return {VYR_StringGet(m_handle.get()), VYR_StringLength(m_handle.get())}; }

    void *m_library = nullptr;
    void (*m_answer)(int, const char *, int) = nullptr;
    const FakeDirDialogCall *(*m_lastCall)() = nullptr;
    Handle m_handle{VYR_StringCreate(), VYR_StringDestroy};
};

TEST_F(GeodatabasePicker, answerZeroWritesTheChosenPathBack)
{
    const std::string chosen = "/data/city.gdb";
    m_answer(0, chosen.c_str(), static_cast<int>(chosen.size() + 1));
    int owner = 0;
    ASSERT_TRUE(pick("/data", true, &owner));
    EXPECT_EQ(text(), chosen);
    const FakeDirDialogCall &call = *m_lastCall();
    EXPECT_STREQ(call.title, "Title");
    EXPECT_STREQ(call.prompt, "Prompt");
    EXPECT_STREQ(call.pathIn, "/data");
    EXPECT_EQ(call.parent, &owner);
    EXPECT_EQ(call.option, 1) << "new ones allowed";
}

TEST_F(GeodatabasePicker, nonZeroAnswerKeepsTheHandleEvenWhenTheBufferChanged)
{
    for (const int result : {1, -1, 42}) {
        m_answer(result, "/elsewhere.gdb", 15);
        EXPECT_FALSE(pick("/data/old.gdb", false)) << result;
        EXPECT_EQ(text(), "/data/old.gdb") << result;
        EXPECT_EQ(m_lastCall()->option, 0) << result;
    }
}

// An embedded NUL ends the text the library sees.
TEST_F(GeodatabasePicker, locationIsCutToTheBufferAndTerminated)
{
    m_answer(1, nullptr, -1);
    struct Case
    {
        std::string start;
        std::size_t handed;
    };
    for (const Case &c : {Case{"", 0}, Case{std::string(258, 'p'), 258}, Case{std::string(259, 'p'), 259},
                          Case{std::string(260, 'p'), 259}, Case{std::string(1000, 'p'), 259},
                          Case{std::string("/a\0/b", 5), 2}}) {
        pick(c.start, false);
        const FakeDirDialogCall &call = *m_lastCall();
        EXPECT_EQ(std::string(call.pathIn, ::strnlen(call.pathIn, 260)), c.start.substr(0, c.handed)) << c.handed;
        EXPECT_EQ(call.pathIn[c.handed], '\0') << c.handed;
        EXPECT_EQ(text(), c.start) << c.handed;
    }
}

TEST_F(GeodatabasePicker, unterminatedAnswerIsCutAtTheBuffer)
{
    const std::string full(260, 'q');
    m_answer(0, full.data(), 260);
    ASSERT_TRUE(pick("/", true));
    EXPECT_EQ(text(), std::string(259, 'q'));
}

TEST(GeodatabasePickerLibrary, missingLibraryOrFunctionAnswersFalseWithoutTouchingTheHandle)
{
    Handle handle(VYR_StringCreate(), VYR_StringDestroy);
    VYR_StringSet(handle.get(), "/data/kept.gdb");
    bool textsAsked = false;
    const auto texts = [&] {
        textsAsked = true;
        return vyr::GeodatabasePickerTexts{};
    };
    for (const char *library : {"/nonexistent/libvyr_dirDialog.so", VYR_FAKE_DIRDIALOG_WITHOUT_PICKER}) {
        EXPECT_FALSE(vyr::selectGeodatabaseWith(library, texts, handle.get(), true, nullptr)) << library;
        EXPECT_STREQ(VYR_StringGet(handle.get()), "/data/kept.gdb") << library;
    }
    EXPECT_FALSE(textsAsked);
    // A library without the function is given back.
    EXPECT_EQ(::dlopen(VYR_FAKE_DIRDIALOG_WITHOUT_PICKER, RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST(LayerPicker, answersFalseAndKeepsTheHandleOnThisPlatform)
{
    Handle handle(VYR_StringCreate(), VYR_StringDestroy);
    VYR_StringSet(handle.get(), "/data/roads.shp");
    for (const char *mode : {"multi", "MULTI", "", "layer"}) {
        EXPECT_FALSE(VYREsriLayerDlg(nullptr, handle.get(), "Title", "Add", mode, nullptr)) << mode;
        EXPECT_STREQ(VYR_StringGet(handle.get()), "/data/roads.shp") << mode;
    }
}

} // namespace
