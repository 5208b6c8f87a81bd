// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/Form.h"
#include "support/Robot.h"
#include "support/ScriptedPrompts.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace trovarium {

namespace {

Desktop* theDesktop = nullptr;

// Every test finds the desktop as the first one did.
class CleanDesktop : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { m_prompts.emplace(*theDesktop); }

    void OnTestEnd(const testing::TestInfo&) override
    {
        m_prompts.reset();
        DesktopState& state = theDesktop->state();
        state.unloadedForms.clear();
        state.endCode.reset();
        state.activates.clear();
        theDesktop->Screen().MousePointer = DefaultPointer;
        theDesktop->files().setFaultHook({});
        theDesktop->files().closeAll();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    std::optional<ScriptedPrompts> m_prompts; // a question that no test has foreseen would wait for an answer for ever
};

} // namespace

Desktop& testDesktop()
{
    return *theDesktop;
}

} // namespace trovarium

// The leak sanitizer asks. Libraries, of which the synthesizer leaks by way of glib, and a slow sound device keep some.
extern "C" const char* __lsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "leak:libSDL2\nleak:libdav1d\nleak:libfontconfig\nleak:libglib-2.0";
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (const QByteArray platform = qgetenv("QT_QPA_PLATFORM"); platform.isEmpty() || platform == "offscreen")
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" SCREENS);
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // the desktop of who runs the tests is left alone
    trovarium::FileService files;
    trovarium::Desktop desktop(argc, argv, files, trovarium::Pace::Immediate);
    trovarium::theDesktop = &desktop;
    testing::UnitTest::GetInstance()->listeners().Append(new trovarium::CleanDesktop); // which gtest owns
    return RUN_ALL_TESTS();
}
