#include "guilocalizer.h"

#include "support/scopedenvironment.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace {

// A German user whose narrow code page is `codePage`.
void becomeGerman(vyr::test::ScopedEnvironment &env, const char *codePage)
{
    env.set("VYR_CODEPAGE", codePage);
    env.set("LANGUAGE", std::nullopt);
    env.set("LC_ALL", "de_DE.UTF-8");
    ASSERT_TRUE(std::setlocale(LC_ALL, ""));
}

std::string translate(const char *text, int bufferSize = 1024)
{
    std::string buffer(static_cast<std::size_t>(bufferSize), '\0');
    const int length = GuiLoc_Localize(text, buffer.data(), bufferSize);
    return length > 0 ? buffer.substr(0, static_cast<std::size_t>(length)) : std::string();
}

// The catalogs are found under VYR_HOME, which the test's environment sets to
// the stage directory. The narrow code page is chosen once per process, so
// each test relies on running in a process of its own, as CTest runs them.
TEST(GuiLocalizerTest, TranslatesUnderAGermanLocaleOnly)
{
    vyr::test::ScopedEnvironment env;
    becomeGerman(env, "UTF-8");
    EXPECT_EQ(translate("Cancel"), "Abbrechen");
    EXPECT_EQ(translate("Back"), "Zurück");
    EXPECT_EQ(translate("not in the catalog"), "");
    EXPECT_EQ(translate(""), "");
    EXPECT_EQ(translate("Back", 3), "") << "a translation that does not fit is no translation";

    env.set("LC_ALL", "C.UTF-8");
    ASSERT_TRUE(std::setlocale(LC_ALL, ""));
    EXPECT_EQ(translate("Cancel"), "");
}

TEST(GuiLocalizerTest, TranslationComesInTheNarrowCodePage)
{
    vyr::test::ScopedEnvironment env;
    becomeGerman(env, "CP1252");
    EXPECT_EQ(translate("Back"),
              "Zur\xfc"
              "ck");
    std::setlocale(LC_ALL, "C");
}

} // namespace
