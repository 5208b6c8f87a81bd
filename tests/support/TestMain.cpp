#include "platform/files/FileService.h"
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Form.h"
#include "support/Robot.h"
#include "support/ScriptedPrompts.h"

#include <QCoreApplication>
#include <QTemporaryFile>

#include <gtest/gtest.h>

namespace trovarium {

namespace {

Desktop* theDesktop = nullptr;

// Every test finds the desktop as the first one did.
class CleanDesktop : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { theDesktop->setPrompts(&m_prompts); }

    void OnTestEnd(const testing::TestInfo&) override
    {
        DesktopState& state = theDesktop->state();
        state.graveyard.clear();
        state.endCode.reset();
        state.activates.clear();
        theDesktop->Screen().MousePointer = DefaultPointer;
        theDesktop->files().setFaultHook({});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    ScriptedPrompts m_prompts; // a question that no test has foreseen would wait for an answer for ever
};

} // namespace

Desktop& testDesktop()
{
    return *theDesktop;
}

} // namespace trovarium

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    QTemporaryFile screens;
    if (const QByteArray platform = qgetenv("QT_QPA_PLATFORM"); platform.isEmpty() || platform == "offscreen") {
        screens.open();
        screens.write(R"({"screens": [
            {"name": "first", "x": 0, "y": 0, "width": 800, "height": 800, "logicalDpi": 96, "dpr": 1},
            {"name": "second", "x": 800, "y": 0, "width": 1280, "height": 1024, "logicalDpi": 96, "dpr": 1}]})");
        screens.close();
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toLocal8Bit());
    }
    trovarium::FileService files;
    trovarium::Desktop desktop(argc, argv, files, trovarium::Pace::Immediate);
    trovarium::theDesktop = &desktop;
    testing::UnitTest::GetInstance()->listeners().Append(new trovarium::CleanDesktop); // which gtest owns
    return RUN_ALL_TESTS();
}
