// SPDX-License-Identifier: GPL-3.0-or-later

#include "WindowJobs.h"
#include "browser/frmGroups.h"
#include "browser/frmMain.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "platform/toolkit/Units.h"
#include "store/GroupFile.h"
#include "support/MainWindow.h"
#include "viewer/frmSSP.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace trovarium {

namespace {

constexpr int Turns = 3;
constexpr int Cell = 3;

// A library as it was, once more, when the object goes: lists, information, and photographs that were set aside.
class KeptLibrary {
public:
    explicit KeptLibrary(std::filesystem::path folder)
        : m_folder(std::move(folder))
    {
        for (const auto& entry : std::filesystem::directory_iterator(m_folder / Lists))
            m_lists[entry.path()] = contentOf(entry.path());
    }
    ~KeptLibrary()
    {
        for (const auto& entry : std::filesystem::directory_iterator(m_folder / Lists)) {
            if (m_lists.count(entry.path()) == 0)
                std::filesystem::remove(entry.path());
        }
        for (const auto& [path, content] : m_lists) {
            if (!std::filesystem::exists(path) || contentOf(path) != content)
                std::ofstream(path, std::ios::binary) << content;
        }
        putBack("Photos");
        putBack("Photo_Info");
    }
    KeptLibrary(const KeptLibrary&) = delete;
    KeptLibrary& operator=(const KeptLibrary&) = delete;

private:
    static constexpr const char* Lists = "Photo_SlideGroups";

    static std::string contentOf(const std::filesystem::path& path)
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void putBack(const char* kind) const
    {
        const std::filesystem::path aside = m_folder / kind / "Removed";
        if (!std::filesystem::exists(aside))
            return;
        for (const auto& entry : std::filesystem::directory_iterator(aside)) {
            const std::filesystem::path name = entry.path().filename();
            std::filesystem::rename(entry.path(), m_folder / kind / name);
            if (kind == std::string("Photos")) // nobody looks at what the thumbnail shows
                std::filesystem::copy_file(entry.path().parent_path().parent_path() / name,
                    m_folder / "Photo_Thumbnails" / name, std::filesystem::copy_options::skip_existing);
        }
    }

    std::filesystem::path m_folder;
    std::map<std::filesystem::path, std::string> m_lists{};
};

// Agrees to everything, and names each group anew.
class Agreement : public Prompts {
public:
    Answer messageBox(std::string_view /*text*/, Message kind, std::string_view /*title*/) override
    {
        return kind == Message::Question || kind == Message::Warning ? Answer::Yes : Answer::Ok;
    }
    std::string inputBox(std::string_view /*prompt*/, std::string_view /*title*/, std::string_view /*initial*/) override
    {
        return "Named " + std::to_string(++m_names);
    }

private:
    int m_names = 0;
};

// From one moment to another, in milliseconds: by the clock, and of all processors' time.
class Stopwatch {
public:
    void stop()
    {
        if (m_wall)
            return;
        m_wall = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - m_start).count();
        m_cpu = 1000.0 * static_cast<double>(std::clock() - m_cpuStart) / CLOCKS_PER_SEC;
    }
    double wall() const { return m_wall.value(); }
    double cpu() const { return m_cpu; }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    std::clock_t m_cpuStart = std::clock();
    std::optional<double> m_wall{};
    double m_cpu = 0;
};

// The main window and what happens in it while an act is timed.
struct Stage {
    MainWindow& window;
    int atFirst; // photographs in the group of all
    Stopwatch* watch = nullptr;

    frmMain& form() { return window.form(); }
    Robot& robot() { return window.robot(); }

    Form& shown(std::string_view name)
    {
        for (int i = 0; i < window.desktop().formsCount(); ++i) {
            if (window.desktop().formsItem(i).Name() == name)
                return window.desktop().formsItem(i);
        }
        throw std::runtime_error("no " + std::string(name));
    }
    GroupOnShow& group() { return window.album().group; }
    void row(int index) { robot().click(form().pctAlbumList(index)); }
    void select() { robot().click(form().imgThumbnail(Cell)); }
    void selectAll() { robot().key(form(), AKey, CtrlKey); }
    void open() { robot().doubleClick(form().imgThumbnail(Cell)); }
    void escape() { robot().key(*window.desktop().activeForm(), EscapeKey); }
    // The act ends when the dialog is painted.
    void openDialog(std::string_view name, Menu& entry)
    {
        robot().whenShown(name, [this, name] {
            window.paint();
            watch->stop();
            robot().close(shown(name));
        });
        robot().choose(entry);
    }
    void openMenu()
    {
        robot().whenMenuOpens([this] {
            window.paint();
            watch->stop();
            robot().dismissMenu();
        });
        robot().click(form().imgThumbnail(Cell), RightButton);
    }
    void sendToGroup(Menu& entry)
    {
        robot().whenShown("frmGroups", [this] {
            ListBox& names = dynamic_cast<frmGroups&>(shown("frmGroups")).lstGroups;
            window.paint();
            robot().click(names, LeftButton, NoKeys, At{30, 10});
        });
        robot().choose(entry);
    }
    void startShow()
    {
        robot().whenShown("frmSSP", [this] { robot().click(dynamic_cast<frmSSP&>(shown("frmSSP")).cmdOkay); });
        robot().click(form().cmdSlideshow);
    }
    void drag(Control& from, Control& to)
    {
        robot().press(from);
        robot().moveTo(to);
        robot().release();
    }
    void dragScrollBarToEnd()
    {
        VScroll& bar = form().VScroll1;
        constexpr float Arrow = 20;
        robot().press(bar, LeftButton, NoKeys, At{bar.Width() / 2, Arrow + 5});
        robot().moveTo(bar, At{bar.Width() / 2, bar.Height() + Arrow});
        robot().release();
    }
};

using Deed = std::function<void(Stage&)>;
using Check = std::function<bool(Stage&)>;

void nothing(Stage& /*stage*/) { }

bool always(Stage& /*stage*/)
{
    return true;
}

Check selected(int count)
{
    return [count](Stage& stage) { return stage.group().SelectedCount == count; };
}

bool isWholeGroupOnShow(Stage& stage)
{
    return isAllPhotosGroup(stage.group().CurrentGroupName);
}

bool isFirstPage(Stage& stage)
{
    return stage.form().VScroll1.Value() == 1;
}

bool isLastPage(Stage& stage)
{
    return stage.form().VScroll1.Value() == stage.form().VScroll1.Max();
}

bool isPhotographOnShow(Stage& stage)
{
    return stage.form().imgbox.Visible();
}

bool isFullScreen(Stage& stage)
{
    return stage.window.desktop().activeForm()->Name() == "frmFullScreen";
}

bool isEdited(Stage& stage)
{
    return stage.window.album().view.InfoEditing;
}

// `before` and `after` are not timed.
struct Act {
    const char* name;
    Deed before;
    Deed act;
    Check isDone;
    Deed after = nothing;
};

std::vector<Act> acts()
{
    using S = Stage&;
    const Deed all = [](S s) { s.row(0); };
    const Deed small = [](S s) { s.row(1); };
    const Deed select = [](S s) { s.select(); };
    const Deed selectAll = [](S s) { s.selectAll(); };
    const Deed selectOfSmall = [](S s) {
        s.row(1);
        s.select();
    };
    const Deed open = [](S s) { s.open(); };
    const Deed escape = [](S s) { s.escape(); };
    const Deed toFirstPage = [](S s) { s.robot().key(s.form(), HomeKey); };
    const Deed openWithInfoDown = [](S s) {
        s.open();
        s.robot().click(s.form().optInfoPosition(0));
    };
    const Deed edit = [](S s) { s.robot().click(s.form().cmdEditPhotoInfo); };
    const Deed fullScreen = [](S s) { s.robot().click(s.form().cmdFullScreen); };
    const Deed startShow = [](S s) { s.startShow(); };
    const auto onlyMain = [](S s) { return s.window.desktop().formsCount() == 1; };
    const auto dialog = [](const char* act, const char* name, auto entry, Deed before) {
        return Act{act, std::move(before), [=](S s) { s.openDialog(name, s.form().*entry); }, always};
    };
    return {
        {"ClickGroup", all, small, [](S s) { return s.group().PhotoCount <= 100; }, all},
        {"ClickGroupOfAll", small, all, isWholeGroupOnShow},
        {"NextPage", toFirstPage, [](S s) { s.robot().wheel(s.form().pctWindow, 1); }, std::not_fn(isFirstPage)},
        {"LastPageByScrollBar", toFirstPage, [](S s) { s.dragScrollBarToEnd(); }, isLastPage, toFirstPage},
        {"LastPageByKey", toFirstPage, [](S s) { s.robot().key(s.form(), EndKey); }, isLastPage, toFirstPage},
        {"SelectOne", all, select, selected(1)},
        {"SelectAll", all, selectAll, [](S s) { return s.group().SelectedCount == s.group().PhotoCount; }},
        {"SelectOneOfAllSelected", selectAll, select, selected(1)},
        {"RenameGroup", small, [](S s) { s.robot().key(s.form(), F2Key); }, always, all},
        {"NewGroup", all, [](S s) { s.robot().choose(s.form().mnuFileCreate); }, always},
        {"DeleteGroup", small, [](S s) { s.robot().choose(s.form().mnuFileRemove); }, always, all},
        {"ScrollGroups", all, [](S s) { s.robot().click(s.form().pctArrows(2)); }, always,
            [](S s) { s.robot().click(s.form().pctArrows(0)); }},
        {"MoveToPlace", select, [](S s) { s.drag(s.form().imgThumbnail(Cell), s.form().imgThumbnail(9)); },
            selected(0)},
        {"MoveToPlaceByKey", select, [](S s) { s.robot().key(s.form(), RightKey, ShiftKey | CtrlKey); }, selected(1)},
        {"CopyToGroupByDrag", select, [](S s) { s.drag(s.form().imgThumbnail(Cell), s.form().pctAlbumList(4)); },
            always},
        {"CopyToGroup", select, [](S s) { s.sendToGroup(s.form().mnuEditAdd); }, selected(1)},
        {"MoveToGroup", selectOfSmall, [](S s) { s.sendToGroup(s.form().mnuEditMove); }, selected(0), all},
        {"RemoveFromGroup", select, [](S s) { s.robot().key(s.form(), DeleteKey); }, selected(0)},
        {"RemoveFromProgram", select, [](S s) { s.robot().choose(s.form().mnuEditRemoveFromAlbum); },
            [](S s) { return s.group().PhotoCount < s.atFirst; }, [](S s) { s.atFirst = s.group().PhotoCount; }},
        {"OpenOne", all, open, isPhotographOnShow, escape},
        {"Step", open, [](S s) { s.robot().click(s.form().pctNext); }, isPhotographOnShow, escape},
        {"BackToThumbnails", open, escape, std::not_fn(isPhotographOnShow)},
        {"Zoom", open, [](S s) { s.robot().click(s.form().cmdZoomIn); }, isPhotographOnShow, escape},
        {"FullScreen", open, fullScreen, isFullScreen, escape},
        {"LeaveFullScreen", fullScreen, escape, onlyMain},
        {"EditInfo", openWithInfoDown, edit, isEdited,
            [=](S s) {
                edit(s);
                escape(s);
            }},
        {"SaveInfo",
            [=](S s) {
                open(s);
                edit(s);
                s.form().txtTitle.Text = "Another title";
            },
            edit, std::not_fn(isEdited), escape},
        dialog("Search", "frmSearch", &frmMain::mnuEditSearchAppend, all),
        dialog("Import", "frmImport", &frmMain::mnuFileImport, all),
        dialog("Export", "frmExport", &frmMain::mnuFileExport, select),
        dialog("ExportOfAll", "frmExport", &frmMain::mnuFileExport, selectAll),
        dialog("ClipLinks", "frmAddMidiWav", &frmMain::mnuEditWaveLink, all),
        {"ThumbnailMenu", all, [](S s) { s.openMenu(); }, selected(2)},
        {"StartShow", all, startShow, isFullScreen, escape},
        {"EndShow", startShow, escape, onlyMain},
        {"Exit", all, [](S s) { s.robot().close(s.form()); }, always},
    };
}

double medianOf(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void perform(benchmark::State& state, Desktop& desktop, const std::string& folder, int count, const Act& act)
{
    const KeptLibrary kept(folder);
    Agreement agreement;
    MainWindow window(desktop, folder);
    desktop.setPrompts(&agreement);
    Stage stage{window, window.album().group.PhotoCount};
    if (stage.atFirst != count)
        state.SkipWithError("not all photographs are on show");
    std::vector<double> walls;
    std::vector<double> cpus;
    for (auto _ : state) {
        act.before(stage);
        window.paint();
        untilIdle(desktop);
        Stopwatch watch;
        stage.watch = &watch;
        act.act(stage);
        window.paint();
        watch.stop();
        if (act.name != std::string("Exit") && !act.isDone(stage))
            state.SkipWithError("the act had no effect");
        state.SetIterationTime(watch.wall() / 1000);
        walls.push_back(watch.wall());
        cpus.push_back(watch.cpu());
        act.after(stage);
    }
    state.counters["first"] = cpus.front();
    state.counters["median"] = medianOf(walls);
    state.counters["cpu"] = medianOf(cpus);
}

} // namespace

void addActs(Desktop& desktop, const std::string& data)
{
    for (const int count : {1008, 32000}) {
        const std::string of = std::to_string(count);
        for (Act& act : acts()) {
            benchmark::RegisterBenchmark((act.name + of).c_str(),
                [&desktop, folder = data + "/library of " + of + " in 300 groups", count, act](
                    benchmark::State& state) { perform(state, desktop, folder, count, act); })
                ->UseManualTime()
                ->Iterations(act.name == std::string("Exit") ? 1 : Turns)
                ->Unit(benchmark::kMillisecond);
        }
    }
}

} // namespace trovarium
