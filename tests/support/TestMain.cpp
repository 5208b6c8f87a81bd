#include "platform/files/FileService.h"
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Form.h"
#include "support/Robot.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace trovarium {

namespace {

Desktop* theDesktop = nullptr;

// A question that no test has foreseen would wait for an answer for ever.
class NoPrompts : public Prompts {
public:
    Answer messageBox(std::string_view text, Buttons, std::string_view) override
    {
        ADD_FAILURE() << "unexpected message: " << text;
        return Answer::No;
    }
    std::string inputBox(std::string_view prompt, std::string_view, std::string_view) override
    {
        ADD_FAILURE() << "unexpected question: " << prompt;
        return {};
    }
};

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

    NoPrompts m_prompts;
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
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    trovarium::FileService files;
    trovarium::Desktop desktop(argc, argv, files, trovarium::Pace::Immediate);
    trovarium::theDesktop = &desktop;
    testing::UnitTest::GetInstance()->listeners().Append(new trovarium::CleanDesktop); // which gtest owns
    return RUN_ALL_TESTS();
}
