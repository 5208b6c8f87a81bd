// Random presses, drags, keys, menu choices and answers on the real program, with a library of its own.
//
//     monkey [STEPS] [SEED]
//
// Fails when a failure reaches the dispatch that no handler is meant to let pass, and when a photograph is neither in
// its folder nor in the one of the removed ones when the program ends.

#include "platform/qt/toolkit/DesktopState.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Menu.h"
#include "platform/toolkit/Prompts.h"
#include "platform/toolkit/Timer.h"
#include "runtime/Failure.h"
#include "startup/Program.h"
#include "startup/UnloadAllForms.h"
#include "store/Album.h"
#include "support/PlainBitmap.h"
#include "support/Robot.h"
#include "support/TemporaryFolder.h"

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <sstream>

namespace trovarium {

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

constexpr int Photographs = 60;
constexpr int Groups = 6;
// A second, and an organ's note.
const std::string Clip = "RIFF\x64\x1F\0\0WAVEfmt \x10\0\0\0\1\0\1\0\x40\x1F\0\0\x40\x1F\0\0\1\0\x08\0data\x40\x1F\0\0"s
    + std::string(8000, '\x60');
const std::string Music =
    "MThd\0\0\0\6\0\0\0\1\0\x60MTrk\0\0\0\x10\0\xC0\x10\0\x90\x2D\x64\x9E\0\x80\x2D\0\0\xFF\x2F\0"s;
constexpr int MostNested = 4; // acts within acts: a slide and an open menu let the user go on

class Monkey : public Prompts {
    // The same fortune for the same seed, on every machine.
    int below(int limit) { return static_cast<int>(m_dice() % static_cast<unsigned>(limit)); }
    bool oneIn(int times) { return below(times) == 0; }
    template <class List>
    auto& of(List& list)
    {
        return list[static_cast<std::size_t>(below(static_cast<int>(std::size(list))))];
    }

public:
    Monkey(int steps, unsigned seed)
        : m_stepsLeft(steps)
        , m_dice(seed)
    {
        m_desktop.setPrompts(this);
        m_turn.callOnTimeout([this] {
            m_turn.start(); // anew, so that the next act comes in whatever loop runs then
            ++m_depth;
            m_desktop.guarded([this] { act(); });
            --m_depth;
        });
        // The dialogs look about the machine: a scan, an export or an import touches nothing outside.
        m_desktop.files().setFaultHook([cage = m_folder.inside()](FileOperation operation, std::string_view path) {
            if (operation != FileOperation::Exists && !path.starts_with(cage))
                throw Failure(FailureKind::PathFileAccess);
        });
        for (const char* home : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            setenv(home, m_folder.path().c_str(), 1);
        fs::create_directories(m_folder.native("Library/Photos/Removed"));
        for (const char* folder : {"SlideGroups", "Audio", "Midi"})
            fs::create_directories(m_folder.native(std::string("Library/Photo_") + folder));
        for (int i = 0; i < Photographs; ++i)
            m_folder.write("Library/Photos/Removed/" + name(i), photograph(i));
    }

    void run()
    {
        while (m_stepsLeft > 0) {
            fillUp();
            Album album(m_desktop.files());
            Program program(m_desktop, album, m_folder.inside("Library"));
            m_turn.start();
            m_desktop.guarded([&] { program.Main(); });
            while (m_stepsLeft > 0 && !m_desktop.state().ended() && m_desktop.formsCount() > 0)
                m_desktop.guarded([&] { m_desktop.DoEvents(); });
            m_turn.stop();
            UnloadAllForms(m_desktop, "");
            m_desktop.state().endCode.reset();
            m_desktop.state().graveyard.clear();
            m_desktop.state().activates.clear();
        }
        fillUp();
        for (int i = 0; i < Photographs; ++i)
            EXPECT_TRUE(fs::exists(path(i)) && m_folder.read("Library/Photos/" + name(i)) == photograph(i)) << i;
    }

    // Seldom yes where photographs leave the program, so that enough stay to play with.
    Answer messageBox(std::string_view text, Message kind, std::string_view) override
    {
        const bool isYes = oneIn(text.find("from the program?") != text.npos ? 10 : 2);
        return kind == Message::Notice || kind == Message::Error ? Answer::Ok : isYes ? Answer::Yes : Answer::No;
    }
    std::string inputBox(std::string_view, std::string_view, std::string_view initial) override
    {
        static const std::vector<std::string> names{"", "", "Winter", "Sommer \xC3\xBC", "a:b", "a_b", "  All Photos  ",
            "Group 1", "\xF0\x9F\x98\x80", ".", " ", "temp", "TmpGroup", std::string(300, 'x')};
        return oneIn(4) ? std::string(initial) : of(names);
    }

private:
    // Now and then a little outside.
    At somewhere(Form& form)
    {
        const auto along = [this](float twips) { return static_cast<float>(below(static_cast<int>(twips / 13)) - 40); };
        return {along(form.clientWidth()), along(form.clientHeight())};
    }

    static bool isFilm(int number) { return number % 12 == 7; }
    static std::string name(int number) { return "p" + std::to_string(number) + (isFilm(number) ? ".avi" : ".jpg"); }
    std::string path(int number) const { return m_folder.native("Library/Photos/" + name(number)); }
    static std::string photograph(int number)
    {
        if (!isFilm(number))
            return plainBitmap(30 + number * 7, 400 - number * 5);
        std::ifstream film(FILMS "/sound.avi", std::ios::binary);
        return {std::istreambuf_iterator<char>(film), {}};
    }

    // What the user does between two starts: removed photographs come back, and lists are written anew.
    void fillUp()
    {
        std::error_code isLost; // told at the end
        for (int i = 0; i < Photographs; ++i)
            if (!fs::exists(path(i)))
                fs::rename(m_folder.native("Library/Photos/Removed/" + name(i)), path(i), isLost);
        for (int i = 1; i <= Groups; ++i) {
            std::string lines;
            for (int count = below(40); count > 0; --count)
                lines += name(below(Photographs)) + "\r\n";
            m_folder.write("Library/Photo_SlideGroups/Group " + std::to_string(i) + ".lst", lines);
            m_folder.write("Library/Photo_Audio/" + name(i) + ".wav", Clip);
            m_folder.write("Library/Photo_Midi/Group " + std::to_string(i) + ".mid", Music);
        }
    }

    void act()
    {
        const DesktopState& state = m_desktop.state();
        const auto open = std::find_if(state.shown.rbegin(), state.shown.rend(),
            [&](const Form* form) { return form->view() != nullptr && state.isOpenToInput(*form); });
        if (state.ended() || open == state.shown.rend())
            return;
        Form& form = **open;
        const bool isMain = form.Name() == "frmMain";
        const bool leaving = --m_stepsLeft <= 0 || m_depth > MostNested;
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget()))
            use(*menu, leaving);
        else if (leaving ? !isMain : oneIn(isMain ? 200 : 10))
            m_robot.close(form);
        else if (!leaving)
            use(form);
    }

    // The last key may end the menu.
    void use(QMenu& menu, bool leaving)
    {
        for (int downs = below(12); downs > 0; --downs)
            QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyPress(&menu, leaving || oneIn(10) ? Qt::Key_Escape : Qt::Key_Return);
    }

    void use(Form& form)
    {
        std::vector<Control*> controls = form.controls();
        for (std::size_t i = 0; i < controls.size(); ++i)
            if (const auto* inner = dynamic_cast<Container*>(controls[i]))
                controls.insert(controls.end(), inner->controls().begin(), inner->controls().end());
        std::erase_if(
            controls, [](const Control* control) { return !control->isShown() || control->view() == nullptr; });
        Control* control = controls.empty() ? nullptr : of(controls);
        const int what = below(20);
        const int shift = oneIn(2) ? NoKeys : below(4);
        if (what < 2 && !form.timers().empty())
            of(form.timers())->Tick.raise();
        else if (what < 4 && !form.menus().empty())
            choose(*of(form.menus()));
        else if (what < 6 || control == nullptr)
            key(form, shift);
        else if (what < 8)
            m_robot.wheel(*control, below(5) - 2);
        else if (what < 10)
            m_robot.doubleClick(*control, shift);
        else
            drag(form, what < 13 ? control : nullptr, shift);
    }

    void key(Form& form, int shift)
    {
        static const std::vector<int> codes{
            8, 9, 9, 13, 27, 32, 33, 34, 35, 36, 37, 38, 39, 40, 46, 93, 107, 109, 113, 122, 65, 78, 89};
        if (oneIn(6))
            m_robot.type(form, oneIn(2) ? "\xC3\xA4" : "x=\xE2\x82\xAC");
        else
            m_robot.key(form, of(codes), shift);
    }

    // From the control, or from anywhere: the large ones are hit more often then. A click is a drag of no moves.
    void drag(Form& form, Control* control, int shift)
    {
        const int button = oneIn(4) ? RightButton : LeftButton;
        control != nullptr ? m_robot.press(*control, button, shift)
                           : m_robot.press(form, somewhere(form), button, shift);
        for (int moves = below(12) - 6; moves > 0 && form.view() != nullptr; --moves)
            m_robot.moveTo(form, somewhere(form), shift);
        m_robot.release(shift);
    }

    // From the bar, as far down as it goes. A start takes as long as many acts, so the program is seldom left.
    void choose(Menu& top)
    {
        const auto isOpen = [](const Menu& menu) { return menu.Visible() && menu.Enabled() && !menu.isSeparator(); };
        Menu* entry = &top;
        while (isOpen(*entry) && !entry->entries().empty())
            entry = of(entry->entries());
        if (isOpen(*entry) && (entry->Name() != "mnuFileExit" || oneIn(20)))
            m_robot.choose(*entry);
    }

    Desktop& m_desktop = testDesktop();
    int m_stepsLeft;
    std::mt19937 m_dice;
    Robot m_robot{m_desktop};
    TemporaryFolder m_folder;
    QTimer m_turn;
    int m_depth = 0;
};

} // namespace

TEST(Monkey, MakesNothingFailAndLosesNoPhotograph)
{
    const QStringList arguments = QApplication::arguments();
    std::ostringstream reported;
    std::streambuf* const errors = std::cerr.rdbuf(reported.rdbuf());
    Monkey(arguments.value(1, "4000").toInt(), arguments.value(2, "1").toUInt()).run();
    std::cerr.rdbuf(errors);
    // The button stays enabled when the photograph is left, and nothing is lost by its press.
    const std::string known = "frmMain.cmdPlayAudioClip(0): Subscript out of range\n";
    std::string failures = reported.str();
    for (std::size_t at = 0; (at = failures.find(known)) != failures.npos;)
        failures.erase(at, known.size());
    EXPECT_EQ(failures, "");
}

} // namespace trovarium
