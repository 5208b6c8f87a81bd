// Random presses, drags, keys, menu choices and answers on the real program, with a library of its own.
//
//     monkey [--steps N | --minutes N] [--seed N] [--trace]
//
// Fails when a failure reaches the dispatch that no handler is meant to let pass, and when a photograph is
// neither in its folder nor in the one of the removed ones at the end. `--trace` names each act beforehand.

#include "platform/files/FileService.h"
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Menu.h"
#include "platform/toolkit/Prompts.h"
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

// The same fortune for the same seed, on every machine.
class Dice {
public:
    explicit Dice(unsigned seed)
        : m_engine(seed)
    {
    }
    int below(int limit) { return static_cast<int>(m_engine() % static_cast<unsigned>(limit)); }
    bool oneIn(int times) { return below(times) == 0; }
    template <class List>
    auto& of(List& list)
    {
        return list[static_cast<std::size_t>(below(static_cast<int>(std::size(list))))];
    }

private:
    std::mt19937 m_engine;
};

class RandomAnswers : public Prompts {
public:
    RandomAnswers(Desktop& desktop, Dice& dice)
        : m_desktop(desktop)
        , m_dice(dice)
    {
        desktop.setPrompts(this);
    }
    ~RandomAnswers() override { m_desktop.setPrompts(nullptr); }
    RandomAnswers(const RandomAnswers&) = delete;
    RandomAnswers& operator=(const RandomAnswers&) = delete;

    // Seldom yes where photographs leave the program, so that enough stay to play with.
    Answer messageBox(std::string_view text, Buttons buttons, std::string_view) override
    {
        if (buttons == Buttons::Ok)
            return Answer::Ok;
        return m_dice.oneIn(text.find("from the program?") != text.npos ? 10 : 2) ? Answer::Yes : Answer::No;
    }
    std::string inputBox(std::string_view, std::string_view, std::string_view initial) override
    {
        static const std::vector<std::string> names{"", "", "Winter", "Sommer \xC3\xBC", "a:b", "a_b", "  All Photos  ",
            "Group 1", "\xF0\x9F\x98\x80", ".", " ", "temp", "TmpGroup", std::string(300, 'x')};
        return m_dice.oneIn(4) ? std::string(initial) : m_dice.of(names);
    }

private:
    Desktop& m_desktop;
    Dice& m_dice;
};

class Monkey {
public:
    Monkey(Desktop& desktop, const Orders& orders)
        : m_desktop(desktop)
        , m_orders(orders)
        , m_dice(orders.seed)
        , m_answers(desktop, m_dice)
        , m_robot(desktop)
    {
        setenv("XDG_CONFIG_HOME", m_folder.native("config").c_str(), 1);
        setenv("XDG_DATA_HOME", m_folder.native("data").c_str(), 1);
        fs::create_directories(m_folder.native("Library/Photos"));
        fs::create_directories(m_folder.native("Library/Photo_SlideGroups"));
        for (int i = 0; i < Photographs; ++i) {
            const std::string name = "p" + std::to_string(i) + ".jpg";
            m_photographs[name] = plainBitmap(30 + i * 7, 400 - i * 5);
            m_folder.write("Library/Photos/" + name, m_photographs[name]);
        }
    }

    // The exit code.
    int run()
    {
        while (!isOver()) {
            fillUp();
            Album album(m_desktop.files());
            Program program(m_desktop, album, m_folder.inside("Library"));
            m_program = &program;
            ++m_starts;
            arm();
            m_desktop.guarded([&] { program.Main(); });
            while (!isOver() && !m_desktop.state().ended() && m_desktop.formsCount() > 0)
                m_desktop.guarded([&] { m_desktop.DoEvents(); });
            end();
        }
        for (const auto& [name, bytes] : m_photographs)
            EXPECT_TRUE(holds("Library/Photos/" + name, bytes) || holds("Library/Photos/Removed/" + name, bytes))
                << name << " is lost";
        std::cout << m_steps << " acts in " << m_starts << " starts\n";
        return testing::UnitTest::GetInstance()->ad_hoc_test_result().Failed() ? 1 : 0;
    }

private:
    bool isOver() const
    {
        if (m_orders.minutes <= 0)
            return m_steps >= m_orders.steps;
        return std::chrono::steady_clock::now() - m_begin
            > std::chrono::duration<double, std::ratio<60>>(m_orders.minutes);
    }

    bool holds(const std::string& name, const std::string& bytes) const
    {
        return fs::exists(m_folder.native(name)) && m_folder.read(name) == bytes;
    }

    // What the user does between two starts: removed photographs come back, and lists are written anew.
    void fillUp()
    {
        for (const auto& [name, bytes] : m_photographs)
            if (!fs::exists(m_folder.native("Library/Photos/" + name))
                && holds("Library/Photos/Removed/" + name, bytes))
                m_folder.write("Library/Photos/" + name, bytes);
        for (int i = 1; i <= Groups; ++i) {
            std::string lines;
            for (int count = m_dice.below(40); count > 0; --count)
                lines += "p" + std::to_string(m_dice.below(Photographs)) + ".jpg\r\n";
            m_folder.write("Library/Photo_SlideGroups/Group " + std::to_string(i) + ".lst", lines);
        }
    }

    void end()
    {
        m_program = nullptr;
        UnloadAllForms(m_desktop, "");
        DesktopState& state = m_desktop.state();
        state.endCode.reset();
        while (m_armed)
            m_desktop.DoEvents();
        state.graveyard.clear();
        state.activates.clear();
    }

    // The next act comes at the next turn of whatever loop runs then.
    void arm()
    {
        if (std::exchange(m_armed, true))
            return;
        m_robot.atNextTurn([this] {
            m_armed = false;
            if (m_program == nullptr)
                return;
            arm();
            ++m_depth;
            act();
            --m_depth;
        });
    }

    void trace(const std::string& what) const
    {
        if (m_orders.trace)
            std::cout << m_steps << std::string(static_cast<std::size_t>(m_depth), ' ') << what << "\n" << std::flush;
    }

    Form* openForm() const
    {
        const auto& shown = m_desktop.state().shown;
        for (auto form = shown.rbegin(); form != shown.rend(); ++form)
            if ((*form)->view() != nullptr && m_desktop.state().isOpenToInput(**form))
                return *form;
        return nullptr;
    }

    void act()
    {
        if (m_desktop.state().ended() || m_desktop.state().closedToEvents)
            return;
        Form* form = openForm();
        if (form == nullptr)
            return;
        const bool leaving = isOver() || m_depth > MostNested;
        ++m_steps;
        if (const auto menu = m_robot.openMenu()) {
            useMenu(*menu, *form, leaving);
            return;
        }
        const bool isMain = form->Name() == "frmMain";
        if (leaving || (!isMain && m_dice.oneIn(10))) {
            if (!isMain)
                close(*form);
            return;
        }
        switch (m_dice.below(isMain ? 10 : 4)) {
        case 0:
        case 1:
            press(*form);
            break;
        case 2:
            key(*form);
            break;
        case 3:
            trace("type into " + form->Name());
            m_robot.type(*form, m_dice.oneIn(2) ? "\xC3\xA4" : "x=\xE2\x82\xAC");
            break;
        case 4:
            chooseFromBar(*form);
            break;
        default:
            onMainWindow(m_program->mainWindow()());
        }
    }

    void close(Form& form)
    {
        trace("close " + form.Name());
        m_robot.close(form);
    }

    void press(Form& form)
    {
        const auto place = [&] {
            return At{static_cast<float>(m_dice.below(static_cast<int>(form.clientWidth()) / TwipsPerPixel)),
                static_cast<float>(m_dice.below(static_cast<int>(form.clientHeight()) / TwipsPerPixel))};
        };
        const At from = place();
        const int shift = m_dice.oneIn(2) ? NoKeys : m_dice.below(4);
        trace("press " + form.Name() + " " + std::to_string(from.x) + " " + std::to_string(from.y) + " shift "
            + std::to_string(shift));
        m_robot.press(form, from, m_dice.oneIn(4) ? RightButton : LeftButton, shift);
        for (int moves = m_dice.below(5); moves > 0 && form.view() != nullptr; --moves)
            m_robot.moveTo(form, place(), shift);
        m_robot.release(shift);
    }

    void key(Form& form)
    {
        static const std::vector<int> codes{
            8, 9, 13, 27, 32, 33, 34, 35, 36, 37, 38, 39, 40, 46, 93, 107, 109, 113, 122, 65, 78, 89};
        const int code = m_dice.of(codes);
        const int shift = m_dice.oneIn(2) ? NoKeys : m_dice.below(4);
        trace("key " + std::to_string(code) + " shift " + std::to_string(shift) + " to " + form.Name());
        if (code == 9)
            m_robot.tab(form, m_dice.oneIn(2));
        else
            m_robot.key(form, code, shift);
    }

    // Shown, enabled, and no separator.
    static bool isOpen(const Menu& menu) { return menu.Visible() && menu.Enabled() && !menu.isSeparator(); }

    static Menu* find(const std::vector<Menu*>& menus, const std::string& name)
    {
        for (Menu* menu : menus) {
            if (menu->Name() == name)
                return menu;
            if (Menu* inside = find(menu->entries(), name))
                return inside;
        }
        return nullptr;
    }

    void useMenu(const std::vector<std::string>& names, Form& form, bool leaving)
    {
        Menu* entry = names.empty() ? nullptr : find(form.menus(), m_dice.of(names));
        if (leaving || entry == nullptr || !isOpen(*entry) || isBarred(*entry)) {
            trace("dismiss the menu");
            m_robot.dismissMenu();
            return;
        }
        trace("choose " + entry->Name());
        m_robot.choose(*entry);
    }

    void chooseFromBar(Form& form)
    {
        std::vector<Menu*> tops;
        for (Menu* menu : form.menus())
            if (isOpen(*menu))
                tops.push_back(menu);
        if (tops.empty())
            return;
        Menu* entry = m_dice.of(tops);
        while (!entry->entries().empty())
            entry = m_dice.of(entry->entries());
        if (isBarred(*entry) || entry->isSeparator())
            return;
        trace("choose " + entry->Name());
        m_robot.choose(*entry);
    }

    // A start takes as long as many acts.
    bool isBarred(const Menu& entry) { return entry.Name() == "mnuFileExit" && !m_dice.oneIn(20); }

    void onMainWindow(frmMain& main)
    {
        Image& cell = main.imgThumbnail(m_dice.below(16));
        PictureBox& row = main.pctAlbumList(m_dice.below(8));
        switch (m_dice.below(7)) {
        case 0:
            if (cell.Visible()) {
                trace("double click on " + cell.Name());
                m_robot.doubleClick(cell);
            }
            break;
        case 1:
            trace("press a row");
            if (row.Visible())
                m_robot.click(row, m_dice.oneIn(4) ? RightButton : LeftButton);
            break;
        case 2:
            trace("edit");
            m_robot.click(main.cmdEditPhotoInfo);
            break;
        case 3:
            trace("wheel");
            m_robot.wheel(main.pctWindow, m_dice.below(5) - 2);
            break;
        case 4:
            trace("tick");
            main.tmrInfoBox.Tick.raise();
            break;
        case 5:
            if (cell.Visible()) {
                const int shift = m_dice.below(4);
                trace("select with " + std::to_string(shift));
                m_robot.click(cell, m_dice.oneIn(4) ? RightButton : LeftButton, shift);
            }
            break;
        default:
            if (m_dice.oneIn(40))
                close(main);
            else if (cell.Visible())
                drag(main, cell);
        }
    }

    void drag(frmMain& main, Image& cell)
    {
        const int shift = m_dice.oneIn(2) ? NoKeys : m_dice.below(4);
        trace("drag with " + std::to_string(shift));
        m_robot.press(cell, LeftButton, shift);
        for (int moves = 1 + m_dice.below(6); moves > 0 && main.view() != nullptr; --moves)
            m_robot.moveTo(
                main, At{static_cast<float>(m_dice.below(900) - 50), static_cast<float>(m_dice.below(700) - 50)});
        m_robot.release();
    }

    Desktop& m_desktop;
    Orders m_orders;
    Dice m_dice;
    RandomAnswers m_answers;
    Robot m_robot;
    TemporaryFolder m_folder;
    std::map<std::string, std::string> m_photographs;
    Program* m_program = nullptr;
    bool m_armed = false;
    int m_depth = 0;
    int m_steps = 0;
    int m_starts = 0;
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
};

Orders readOrders(int argc, char** argv)
{
    Orders orders;
    for (int i = 1; i < argc; ++i) {
        const std::string order = argv[i];
        const char* value = i + 1 < argc ? argv[i + 1] : "0";
        if (order == "--trace")
            orders.trace = true;
        else if (order == "--steps")
            orders.steps = std::atoi(value);
        else if (order == "--minutes")
            orders.minutes = std::atof(value);
        else if (order == "--seed")
            orders.seed = static_cast<unsigned>(std::atoi(value));
    }
    return orders;
}

} // namespace

} // namespace trovarium

int main(int argc, char** argv)
{
    using namespace trovarium;

    testing::InitGoogleTest(&argc, argv);
    const Orders orders = readOrders(argc, argv);
    FileService files;
    Desktop desktop(argc, argv, files, Pace::Immediate);
    std::ostringstream reported;
    std::streambuf* const errors = std::cerr.rdbuf(reported.rdbuf());
    int code = Monkey(desktop, orders).run();
    std::cerr.rdbuf(errors);
    if (!reported.str().empty()) {
        std::cout << "failures at the dispatch:\n" << reported.str();
        code = 1;
    }
    return code;
}
