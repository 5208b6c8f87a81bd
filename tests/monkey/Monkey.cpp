// Random presses, drags, keys, menu choices and answers on the real program, with a library of its own.
//
//     monkey [--steps N | --minutes N] [--seed N] [--trace]
//
// Acts on any control of whatever form is open. Fails when a failure reaches the dispatch that no handler is
// meant to let pass, and when a photograph is neither in its folder nor in the one of the removed ones at the
// end. `--trace` names each act beforehand.

#include "platform/files/FileService.h"
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

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <random>
#include <sstream>

namespace trovarium {

namespace {

namespace fs = std::filesystem;

constexpr int Photographs = 60;
constexpr int Groups = 6;
constexpr int MostNested = 4; // acts within acts: a slide and an open menu let the user go on

struct Orders {
    int steps = 4000;
    double minutes = 0; // instead of steps
    unsigned seed = 1;
    bool trace = false;
};

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
    Monkey(Desktop& desktop, const Orders& orders)
        : m_desktop(desktop)
        , m_orders(orders)
        , m_dice(orders.seed)
        , m_robot(desktop)
    {
        desktop.setPrompts(this);
        // The dialogs look about the machine: a scan, an export or an import touches nothing outside.
        desktop.files().setFaultHook([cage = m_folder.inside()](FileOperation operation, std::string_view path) {
            if (operation != FileOperation::Exists && !path.starts_with(cage))
                throw Failure(FailureKind::PathFileAccess);
        });
        setenv("HOME", m_folder.path().c_str(), 1);
        setenv("XDG_CONFIG_HOME", m_folder.native("config").c_str(), 1);
        setenv("XDG_DATA_HOME", m_folder.native("data").c_str(), 1);
        fs::create_directories(m_folder.native("Library/Photos"));
        fs::create_directories(m_folder.native("Library/Photo_SlideGroups"));
        for (int i = 0; i < Photographs; ++i)
            m_photographs["p" + std::to_string(i) + ".jpg"] = plainBitmap(30 + i * 7, 400 - i * 5);
    }
    ~Monkey() override
    {
        m_desktop.files().setFaultHook({});
        m_desktop.setPrompts(nullptr);
    }
    Monkey(const Monkey&) = delete;
    Monkey& operator=(const Monkey&) = delete;

    void run()
    {
        int starts = 0;
        for (; !isOver(); ++starts) {
            fillUp();
            Album album(m_desktop.files());
            Program program(m_desktop, album, m_folder.inside("Library"));
            m_isRunning = true;
            arm();
            m_desktop.guarded([&] { program.Main(); });
            while (!isOver() && !m_desktop.state().ended() && m_desktop.formsCount() > 0)
                m_desktop.guarded([&] { m_desktop.DoEvents(); });
            m_isRunning = false;
            UnloadAllForms(m_desktop, "");
            m_desktop.state().endCode.reset();
            while (m_isArmed)
                m_desktop.DoEvents();
            m_desktop.state().graveyard.clear();
            m_desktop.state().activates.clear();
        }
        for (const auto& [name, bytes] : m_photographs)
            EXPECT_TRUE(holds("Library/Photos/" + name, bytes) || holds("Library/Photos/Removed/" + name, bytes))
                << name << " is lost";
        std::cout << m_steps << " acts in " << starts << " starts\n";
    }

    // Seldom yes where photographs leave the program, so that enough stay to play with.
    Answer messageBox(std::string_view text, Buttons buttons, std::string_view) override
    {
        if (buttons == Buttons::Ok)
            return Answer::Ok;
        return oneIn(text.find("from the program?") != text.npos ? 10 : 2) ? Answer::Yes : Answer::No;
    }
    std::string inputBox(std::string_view, std::string_view, std::string_view initial) override
    {
        static const std::vector<std::string> names{"", "", "Winter", "Sommer \xC3\xBC", "a:b", "a_b", "  All Photos  ",
            "Group 1", "\xF0\x9F\x98\x80", ".", " ", "temp", "TmpGroup", std::string(300, 'x')};
        return oneIn(4) ? std::string(initial) : of(names);
    }

private:
    int someShift() { return oneIn(2) ? NoKeys : below(4); }

    // Now and then a little outside.
    At somewhere(Form& form)
    {
        const auto along = [this](float twips) { return static_cast<float>(below(static_cast<int>(twips / 13)) - 40); };
        return {along(form.clientWidth()), along(form.clientHeight())};
    }

    bool isOver() const
    {
        using Minutes = std::chrono::duration<double, std::ratio<60>>;
        if (m_orders.minutes > 0)
            return std::chrono::steady_clock::now() - m_begin > Minutes(m_orders.minutes);
        return m_steps >= m_orders.steps;
    }

    bool holds(const std::string& name, const std::string& bytes) const
    {
        return fs::exists(m_folder.native(name)) && m_folder.read(name) == bytes;
    }

    // What the user does between two starts: removed photographs come back, and lists are written anew.
    void fillUp()
    {
        for (const auto& [name, bytes] : m_photographs) {
            const bool isThere = fs::exists(m_folder.native("Library/Photos/" + name));
            if (m_steps == 0 || (!isThere && holds("Library/Photos/Removed/" + name, bytes)))
                m_folder.write("Library/Photos/" + name, bytes);
        }
        for (int i = 1; i <= Groups; ++i) {
            std::string lines;
            for (int count = below(40); count > 0; --count)
                lines += "p" + std::to_string(below(Photographs)) + ".jpg\r\n";
            m_folder.write("Library/Photo_SlideGroups/Group " + std::to_string(i) + ".lst", lines);
        }
    }

    // The next act comes at the next turn of whatever loop runs then.
    void arm()
    {
        if (std::exchange(m_isArmed, true))
            return;
        m_robot.atNextTurn([this] {
            m_isArmed = false;
            if (!m_isRunning)
                return;
            arm();
            ++m_depth;
            act();
            --m_depth;
        });
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
        const bool leaving = isOver() || m_depth > MostNested;
        ++m_steps;
        if (const auto names = m_robot.openMenu()) {
            if (leaving || names->empty() || !choose(find(form.menus(), of(*names))))
                m_robot.dismissMenu();
        } else if (leaving ? !isMain : oneIn(isMain ? 200 : 10)) {
            trace("close", form);
            m_robot.close(form);
        } else if (!leaving) {
            use(form);
        }
    }

    void use(Form& form)
    {
        std::vector<Control*> controls;
        collect(form, controls);
        const int what = below(10);
        if (what == 0 && !form.timers().empty())
            of(form.timers())->Tick.raise();
        else if (what == 1 && !form.menus().empty())
            choose(of(form.menus()));
        else if (what <= 2 || controls.empty())
            key(form, someShift());
        else
            point(form, *of(controls), someShift());
    }

    void key(Form& form, int shift)
    {
        static const std::vector<int> codes{
            8, 13, 27, 32, 33, 34, 35, 36, 37, 38, 39, 40, 46, 93, 107, 109, 113, 122, 65, 78, 89};
        const int code = of(codes);
        trace("key " + std::to_string(code), form);
        if (oneIn(6))
            m_robot.tab(form, oneIn(2));
        else if (oneIn(6))
            m_robot.type(form, oneIn(2) ? "\xC3\xA4" : "x=\xE2\x82\xAC");
        else
            m_robot.key(form, code, shift);
    }

    // On the control, or where it happens to be: the large ones are hit more often then. A click is a drag of no moves.
    void point(Form& form, Control& control, int shift)
    {
        const int what = below(8);
        const int button = oneIn(4) ? RightButton : LeftButton;
        trace("mouse " + std::to_string(what), control);
        if (what == 0) {
            m_robot.wheel(control, below(5) - 2);
        } else if (what == 1) {
            m_robot.doubleClick(control, shift);
        } else {
            what < 4 ? m_robot.press(control, button, shift) : m_robot.press(form, somewhere(form), button, shift);
            for (int moves = std::max(0, below(12) - 6); moves > 0 && form.view() != nullptr; --moves)
                m_robot.moveTo(form, somewhere(form), shift);
            m_robot.release(shift);
        }
    }

    static void collect(const Container& container, std::vector<Control*>& controls)
    {
        for (Control* control : container.controls()) {
            if (!control->isShown() || control->view() == nullptr)
                continue;
            controls.push_back(control);
            if (const auto* inner = dynamic_cast<Container*>(control))
                collect(*inner, controls);
        }
    }

    // Shown, enabled, no separator. A start takes as long as many acts, so the program is seldom left.
    bool isOpen(const Menu& menu)
    {
        return menu.Visible() && menu.Enabled() && !menu.isSeparator() && (menu.Name() != "mnuFileExit" || oneIn(20));
    }

    // Whether there was an entry to choose, in the menu itself or further down.
    bool choose(Menu* entry)
    {
        while (entry != nullptr && isOpen(*entry) && !entry->entries().empty())
            entry = of(entry->entries());
        if (entry == nullptr || !isOpen(*entry))
            return false;
        trace("choose", *entry);
        m_robot.choose(*entry);
        return true;
    }

    static Menu* find(const std::vector<Menu*>& menus, const std::string& name)
    {
        for (Menu* menu : menus) {
            Menu* found = menu->Name() == name ? menu : find(menu->entries(), name);
            if (found != nullptr)
                return found;
        }
        return nullptr;
    }

    void trace(const std::string& what, const Component& where) const
    {
        if (m_orders.trace)
            std::cout << m_steps << ' ' << what << ' ' << where.Name() << std::endl;
    }

    Desktop& m_desktop;
    Orders m_orders;
    std::mt19937 m_dice;
    Robot m_robot;
    TemporaryFolder m_folder;
    std::map<std::string, std::string> m_photographs;
    bool m_isRunning = false;
    bool m_isArmed = false;
    int m_depth = 0;
    int m_steps = 0;
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
};

Orders readOrders(int argc, char** argv)
{
    Orders orders;
    for (int i = 1; i < argc; ++i) {
        const std::string order = argv[i];
        const double value = i + 1 < argc ? std::atof(argv[i + 1]) : 0;
        if (order == "--trace")
            orders.trace = true;
        else if (order == "--steps")
            orders.steps = static_cast<int>(value);
        else if (order == "--minutes")
            orders.minutes = value;
        else if (order == "--seed")
            orders.seed = static_cast<unsigned>(value);
    }
    return orders;
}

} // namespace

} // namespace trovarium

int main(int argc, char** argv)
{
    using namespace trovarium;

    testing::InitGoogleTest(&argc, argv);
    FileService files;
    Desktop desktop(argc, argv, files, Pace::Immediate);
    std::ostringstream reported;
    std::streambuf* const errors = std::cerr.rdbuf(reported.rdbuf());
    Monkey(desktop, readOrders(argc, argv)).run();
    std::cerr.rdbuf(errors);
    std::cout << reported.str();
    return testing::UnitTest::GetInstance()->ad_hoc_test_result().Failed() || !reported.str().empty() ? 1 : 0;
}
