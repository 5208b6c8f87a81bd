#include "store/COWReg.h"

#include "support/FailureOf.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace trovarium {

TEST(Settings, TellAnAbsentValueFromAnEmptyOneAndFromAFailingStore)
{
    TestAlbum test;
    COWReg& settings = test.album().Settings();
    EXPECT_EQ(settings.GetOWSetting("Trovarium", "Options", "AutoFix", "True"), "True");
    EXPECT_TRUE(settings.SetOWSetting("Trovarium", "Options", "AutoFix", ""));
    EXPECT_EQ(settings.GetOWSetting("Trovarium", "Options", "AutoFix", "True"), "");
    EXPECT_TRUE(settings.SetOWSetting("Trovarium", "Options", "AutoFix", "Grüße = Łódź"));
    EXPECT_EQ(settings.GetRegSetting("SOFTWARE\\OmbrelaneWorks\\Trovarium\\Options", "AutoFix", ""), "Grüße = Łódź");

    std::filesystem::remove_all(test.settingsFolder());
    std::filesystem::create_directories(test.settingsFolder() + "/settings.txt");
    EXPECT_EQ(settings.GetOWSetting("Trovarium", "Options", "AutoFix", "True"), "");
    EXPECT_FALSE(settings.SetOWSetting("Trovarium", "Options", "AutoFix", "True"));

    test.album().settingsStore.reset();
    EXPECT_EQ(failureOf([&] { test.album().Settings(); }), "Object not set");
}

} // namespace trovarium
