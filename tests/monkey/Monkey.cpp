// SPDX-License-Identifier: GPL-3.0-or-later

// Random presses, drags, keys, menu choices and answers on the real program, with a library of its own, while others
// work on its files too; and a judge of what its people keep.
//
//     monkey [STEPS] [SEED] [SEEDS]
//
// Fails when a failure reaches the dispatch that no handler is meant to let pass, and when the judge complains. A seed
// makes the same acts each time.

#include "monkey/Judge.h"
#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/FileControls.h"
#include "platform/toolkit/Prompts.h"
#include "platform/toolkit/TextBox.h"
#include "runtime/Failure.h"
#include "startup/Program.h"
#include "store/Album.h"
#include "support/Robot.h"
#include "support/TestAlbum.h"

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <iostream>
#include <random>

namespace trovarium {

namespace {

using namespace std::string_literals;

constexpr int Photographs = 60;
constexpr int New = 40; // to import
constexpr int Groups = 11;
constexpr int MostNested = 5; // acts within acts: a slide and an open menu let the user go on

class Monkey : public Prompts {
    // The same fortune for the same seed, on every machine.
    int below(double limit) { return static_cast<int>(m_dice() % std::max(1U, static_cast<unsigned>(limit))); }
    bool oneIn(int times) { return below(times) == 0; }
    template <class List>
    auto& of(List& list)
    {
        return list[static_cast<std::size_t>(below(std::size(list)))];
    }

public:
    Monkey(int steps, unsigned seed)
        : m_steps(steps)
        , m_seed(seed)
        , m_dice(seed)
    {
        m_desktop.setPrompts(this);
        m_turn.callOnTimeout([this] {
            m_turn.start(); // anew, so that the next act comes in whatever loop runs then
            act();
        });
        // The dialogs look about the machine: a scan, an export or an import touches nothing outside. And a full disk.
        m_desktop.files().setFaultHook([this](FileOperation operation, std::string_view path) {
            using enum FileOperation;
            if (operation != Exists && !path.starts_with(m_folder.inside()))
                throw Failure(FailureKind::PathFileAccess);
            if (operation == Copy && path.starts_with(m_folder.inside("Out")) && ++m_exports % 4 == 0)
                throw Failure(FailureKind::DiskFull);
            if (operation == Print || operation == Close || operation == Copy || operation == Delete
                || operation == Rename)
                m_judge.touch();
        });
        for (const char* home : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            setenv(home, m_folder.path().c_str(), 1);
        for (const char* folder :
            {"Library/Photos/Removed", "Library/Photo_Info", "Library/Photo_SlideGroups", "Stick/more", "Out"})
            fs::create_directories(m_folder.native(folder));
    }
    ~Monkey() override { std::cerr.rdbuf(m_terminal); }

    void run()
    {
        while (m_steps > 0) {
            fillUp();
            Album album(m_desktop.files());
            Program program(m_desktop, album, m_folder.inside(m_library));
            m_judge.accept(inLibrary(""));
            m_judge.say("start");
            m_turn.start();
            during([&] { program.Main(); });
            DesktopState& state = m_desktop.state();
            while (m_steps > 0 && !state.ended() && m_desktop.formsCount() > 0)
                m_desktop.guarded([&] { m_desktop.DoEvents(); });
            m_turn.stop();
            UnloadAllForms(m_desktop, "");
            state.endCode.reset();
            state.unloadedForms.clear();
            state.activates.clear();
            during([] {});
        }
    }

    // Seldom yes where photographs leave the program, so that enough stay to play with.
    Answer messageBox(std::string_view text, Message kind, std::string_view) override
    {
        const bool isYes = oneIn(text.find("from the program?") != text.npos ? 4 : 2);
        m_judge.see();
        m_judge.say(isYes ? std::string(text) : "");
        return kind == Message::Notice || kind == Message::Error ? Answer::Ok : isYes ? Answer::Yes : Answer::No;
    }
    std::string inputBox(std::string_view prompt, std::string_view, std::string_view initial) override
    {
        const std::string answer = oneIn(3) ? std::string(initial) : aName();
        m_judge.see();
        m_judge.sayNamed(std::string(prompt), answer);
        return answer;
    }

private:
    const std::string& aName()
    {
        static const std::vector<std::string> names{"", "", "Winter", "Sommer \xC3\xBC", "a:b", "a_b", "  All Photos  ",
            "g1", "g10", "\xF0\x9F\x98\x80", ".", " ", "temp", "TmpGroup", std::string(300, 'x')};
        return of(names);
    }

    // Now and then a little outside.
    At somewhere(Form& form)
    {
        const auto along = [this](float twips) { return static_cast<float>(below(twips / 13) - 40); };
        return {along(form.clientWidth()), along(form.clientHeight())};
    }

    std::string inLibrary(const std::string& file) const { return m_folder.native(m_library + "/" + file); }
    static std::string nameOf(int number)
    {
        const std::string name = (number < Photographs ? "p" : "new") + std::to_string(number) + ".jpg";
        return number == 9 ? "tn_p8.jpg" : name; // as the thumbnail of another, when that goes out
    }
    static void make(const std::string& file, const std::string& bytes)
    {
        if (!fs::exists(file))
            std::ofstream(file, std::ios::binary) << bytes;
    }

    // What happens between two starts: the library moves, the stick is away, and what was removed is there anew. Every
    // fifth photograph is a link to the stick, which has more, and some with the names of others.
    void fillUp()
    {
        std::error_code isAbsent;
        fs::rename(m_folder.native("Away"), m_folder.native("Stick"), isAbsent);
        const std::string before = std::exchange(m_library, oneIn(3) ? "Moved" : "Library");
        fs::rename(m_folder.native(before), inLibrary(""));
        for (int i = 0; i < Photographs + New; ++i) {
            const std::string name = nameOf(i);
            const bool isLink = i % 5 == 0;
            if (i % 5 < 2 || i >= Photographs)
                make(m_folder.native("Stick/" + name), plainBitmap(20 + i, 20));
            if (i >= Photographs)
                continue;
            make(m_folder.native("Out/" + name), "somebody's");
            if (!isLink)
                make(inLibrary("Photos/" + name), plainBitmap(30 + i * 7, 20 + below(40)));
            make(inLibrary("Photos/Removed/" + name), "once");
            const std::string there = isLink ? m_folder.inside("Stick\\") : "\\Photos\\";
            std::string words = "PhotoPath=" + (i % 2 == 0 && !isLink ? m_folder.inside("Library") : "") + there + name;
            for (const char* key :
                {"TITLE=", "PEOPLE=", "PLACE=", "EVENT=", "KEYWORDS=", "PHOTOGRAPHER=", "YEAR=about "})
                words += "\r\n" + (key + name);
            make(inLibrary("Photo_Info/" + name + ".info"), words + "\r\n");
        }
        for (int i = 0; i < Groups; ++i) {
            std::string lines;
            for (int count = below(40); count > 0; --count)
                lines += nameOf(below(Photographs)) + "\r\n";
            make(inLibrary("Photo_SlideGroups/g" + std::to_string(i) + ".lst"), lines);
        }
        if (oneIn(5))
            fs::rename(m_folder.native("Stick"), m_folder.native("Away"));
    }

    // What others do meanwhile: another computer appends to a list, photographs are dropped in.
    void workOfOthers()
    {
        judge(false);
        const std::string list = inLibrary("Photo_SlideGroups/g" + std::to_string(below(Groups)) + ".lst");
        if (oneIn(2))
            for (int i = 0; i < 3; ++i)
                make(inLibrary("Photos/" + nameOf(Photographs + below(New))), plainBitmap(100 + below(100), 10));
        else if (fs::exists(list))
            std::ofstream(list, std::ios::app) << nameOf(below(Photographs)) << "\r\n";
        m_judge.accept(inLibrary(""));
    }

    void during(const std::function<void()>& what)
    {
        ++m_depth;
        m_judge.see();
        m_desktop.guarded(what);
        judge(--m_depth == 0);
    }

    void judge(bool isLastAct)
    {
        const std::string failures = m_errors.str() + m_judge.judge(isLastAct);
        m_errors.str("");
        if (failures.empty() || testing::Test::HasFailure())
            return;
        ADD_FAILURE() << "Seed " << m_seed << ", " << m_steps << " steps from the end: " << m_act << "\n" << failures;
        m_steps = 0;
    }

    void act()
    {
        DesktopState& state = m_desktop.state();
        state.lastLook = {}; // the next act comes with the next call, however soon that is
        const auto open = std::find_if(state.shown.rbegin(), state.shown.rend(),
            [&](const Form* form) { return form->isLoaded() && state.isOpenToInput(*form); });
        if (state.ended() || open == state.shown.rend())
            return;
        Form& form = **open;
        for (Timer* timer : form.timers())
            timer->Interval = 1'000'000'000; // ticks are acts
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        const bool isBetween = m_depth > static_cast<int>(state.modals.size()) + (menu != nullptr ? 1 : 0);
        if (isBetween && !oneIn(8))
            return;
        m_judge.say(isBetween ? "several acts" : "");
        m_act = form.Name();
        const bool isMain = m_act == "frmMain";
        const bool leaving = --m_steps <= 0 || m_depth >= MostNested;
        during([&] {
            if (menu != nullptr)
                use(*menu, leaving);
            else if (leaving ? !isMain : oneIn(isMain ? 200 : 40))
                m_robot.close(form);
            else if (!leaving)
                oneIn(isMain ? 100 : 20) ? workOfOthers() : use(form);
        });
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
        const std::string folders[] = {"Stick", "Stick", "Stick", "Out", m_library + "\\Photos"};
        auto* main = dynamic_cast<frmMain*>(&form);
        std::vector<Control*> controls = form.controls();
        for (std::size_t i = 0; i < controls.size(); ++i)
            if (const Container* inner = controls[i]->container())
                controls.insert(controls.end(), inner->controls().begin(), inner->controls().end());
        const bool isEager = main == nullptr && !oneIn(3); // for what does a dialog's work
        std::erase_if(controls, [isEager](const Control* control) {
            return !control->isShown()
                || (isEager && "cm Fi Di ls"s.find(control->Name().substr(0, 2)) == std::string::npos);
        });
        Control* control = controls.empty() ? nullptr : of(controls);
        Timer* const timer = form.timers().empty() ? nullptr : of(form.timers());
        const int what = below(20);
        m_act += control != nullptr ? "." + control->Name() : "";
        const int shift = oneIn(2) ? NoKeys : below(4);
        FolderList* folder = nullptr;
        for (Control* one : controls)
            folder = folder != nullptr ? folder : dynamic_cast<FolderList*>(one);
        if (main != nullptr && oneIn(main->txtYear.Visible() ? 2 : 30))
            edit(*main);
        else if (folder != nullptr && oneIn(10))
            attempt([&] { folder->Path = m_folder.inside(of(folders)); });
        else if (what < 2 && timer != nullptr && timer->Enabled())
            timer->Tick.raise();
        else if (what < 5 && !form.menus().empty())
            choose(*form.menus()[below(oneIn(3) ? form.menus().size() : 2)]); // the first two do most
        else if (what < 7 || control == nullptr)
            key(form, shift);
        else if (what < 8 && (m_judge.say("several acts"), true)) // one may open a group, and the next choose in it
            m_robot.doubleClick(*control, shift);
        else if (auto* name = dynamic_cast<ComboBox*>(control))
            name->Text = aName();
        else
            drag(form, what < 13 || main == nullptr ? control : nullptr, shift, isEager);
    }

    // Each word stands nowhere else.
    void edit(frmMain& main)
    {
        const Judge::Boxes boxes = Judge::boxesOf(main);
        if (oneIn(6) || !main.txtYear.Visible())
            return m_robot.click(main.cmdEditPhotoInfo);
        m_robot.click(*of(boxes));
        m_robot.type(main, "w" + std::to_string(++m_words));
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
    void drag(Form& form, Control* control, int shift, bool isClick)
    {
        const int button = !isClick && oneIn(4) ? RightButton : LeftButton;
        const auto* main = dynamic_cast<frmMain*>(&form);
        const auto inside = [this](float twips) { return static_cast<float>(below(twips / TwipsPerPixel)); };
        if (control != nullptr)
            m_robot.press(*control, button, shift, At{inside(control->Width()), inside(control->Height())});
        else
            m_robot.press(form, somewhere(form), button, shift);
        for (int moves = isClick ? 0 : below(12) - 6; moves > 0 && form.isLoaded(); --moves) {
            const At to = somewhere(form);
            for (int row = 0; main != nullptr && row < GroupRows; ++row)
                if (std::abs(to.y - main->pctAlbumList(row).Top() - main->pctAlbumList(row).Height() / 2) < 18)
                    m_judge.say("> " + main->lbAlbumList(row).Caption());
            m_robot.moveTo(form, to, shift);
        }
        m_judge.see();
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
    int m_steps;
    const unsigned m_seed;
    std::mt19937 m_dice;
    Robot m_robot{m_desktop};
    TemporaryFolder m_folder;
    std::string m_library = "Library";
    Judge m_judge{m_desktop};
    QTimer m_turn;
    int m_depth = 0;
    int m_words = 0;
    int m_exports = 0;
    std::string m_act;
    std::ostringstream m_errors;
    std::streambuf* const m_terminal = std::cerr.rdbuf(m_errors.rdbuf());
};

} // namespace

TEST(Monkey, MakesNothingFailAndLosesNothing)
{
    const QStringList arguments = QApplication::arguments();
    const unsigned first = arguments.value(2, "1").toUInt();
    for (unsigned i = 0; i < arguments.value(3, "1").toUInt() && !HasFailure(); ++i)
        Monkey(arguments.value(1, "4000").toInt(), first + i).run();
}

} // namespace trovarium
