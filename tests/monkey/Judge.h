// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"
#include "browser/frmGroups.h"
#include "browser/frmMain.h"
#include "export/frmExport.h"
#include "import/frmImport.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "runtime/Text.h"
#include "search/frmSearch.h"
#include "store/GroupFile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace trovarium {

namespace fs = std::filesystem;

// Keeps what a person has in a library, the bytes of the photographs, the words about them and the lines of each group,
// and complains when some of it disappears or moves and no act named it. What an act may change follows from what its
// user saw and said: captions, marks, answers, the row below a drop. The variables of the program have no say in it.
//
// Acts run within acts, while the information box slides or a dialog is open: what they may change adds up.
class Judge {
public:
    using Boxes = std::vector<TextBox*>;

    explicit Judge(Desktop& desktop)
        : m_desktop(desktop)
    {
    }

    // Those of the information about the photograph; each has the name of its word, behind "txt".
    static Boxes boxesOf(frmMain& main)
    {
        return {&main.txtTitle, &main.txtYear, &main.txtPlace, &main.txtEvent, &main.txtPeople, &main.txtPhotographer,
            &main.txtkeywords};
    }

    // What is in the library, and beside it in "Stick" and "Out", is right: others worked on it.
    void accept(const std::string& library)
    {
        m_library = library;
        m_now = read();
    }

    // Files may have changed.
    void touch() { m_isTouched = true; }

    // A permit. "> g" lets the group g get lines.
    void say(const std::string& permit) { m_said += said(permit + "\n") ? "" : upper(permit) + "\n"; }

    void sayNamed(const std::string& question, std::string name)
    {
        CheckGroupName(name); // as the program mends it
        say(question + " > " + name);
        if (question.starts_with("Rename"))
            m_renamed += "Group [" + name + "]\n";
    }

    // To be told whenever what the user sees may have changed.
    void see()
    {
        Words edit{{"", ""}};
        m_main = nullptr;
        for (int i = 0; i < m_desktop.formsCount(); ++i)
            seeForm(m_desktop.formsItem(i));
        if (m_main != nullptr && m_main->txtYear.Visible())
            edit[""] = m_main->lbInfo(6).Caption();
        for (TextBox* box : edit[""].empty() ? Boxes() : boxesOf(*m_main))
            edit[upper(box->Name().substr(3)) + "="] = box->Text();
        if (m_edit[""] != edit[""])
            m_ended = m_edit;
        m_edits.push_back(m_edit = edit);
    }

    // What is wrong, empty for nothing. No permit outlives the last of the acts that run within one another.
    std::string judge(bool isLastAct)
    {
        see();
        m_wrong.clear();
        if (std::exchange(m_isTouched, false))
            judgeFiles();
        judgeEdit();
        m_edits = {m_edit};
        if (!m_wrong.empty())
            m_wrong += "The user saw and said:\n" + m_said;
        if (isLastAct)
            m_said.clear();
        return m_wrong;
    }

private:
    using Lines = std::vector<std::string>;
    using Files = std::map<std::string, Lines>;       // "Photos/p1.jpg"; a picture is one line
    using Words = std::map<std::string, std::string>; // by what is before them in a file; "" is for the photograph

    Files read() const
    {
        Files files;
        std::error_code isAbsent;
        for (const std::string folder : {"Photos/", "Photos/Removed/", "Photo_Info/", "Photo_Info/Removed/",
                 "Photo_SlideGroups/", "../Stick/", "../Out/"})
            for (const auto& file : fs::directory_iterator(m_library + folder, isAbsent)) {
                if (!file.is_regular_file())
                    continue;
                std::string bytes(file.file_size(), ' ');
                std::ifstream(file.path(), std::ios::binary).read(bytes.data(), std::ssize(bytes));
                files[folder + file.path().filename().string()] =
                    folder.starts_with("Photo_") ? linesOf(bytes) : Lines{bytes};
            }
        return files;
    }

    void seeForm(Form& form)
    {
        // A choice among the groups hides them.
        if (auto* groups = dynamic_cast<frmGroups*>(&form))
            if (std::exchange(m_choosing, form.isShown()) || m_choosing)
                say(form.Caption() + " > " + groups->lstGroups.Text());
        if (!form.isShown())
            return;
        say(std::string(form.Name()));
        if (auto* main = dynamic_cast<frmMain*>(&form))
            seeGroup(*(m_main = main));
        else if (auto* search = dynamic_cast<frmSearch*>(&form))
            say("> " + search->cmbGroupName.Text());
        else if (auto* import = dynamic_cast<frmImport*>(&form))
            say(import->chkOptions(0).Value() == 1 ? "overwrite" : "");
        else if (auto* out = dynamic_cast<frmExport*>(&form))
            say((out->chkExport(0).Value() == 1 ? "out to " : "no photographs\nout to ") + out->Dir1.Path());
    }

    // Until the next press the title has the old name of a group that was renamed.
    void seeGroup(const frmMain& main)
    {
        const std::string title = main.lbCount.Caption().substr(0, main.lbCount.Caption().rfind(']') + 1);
        if (std::exchange(m_title, title) != title)
            m_renamed.clear();
        say(title + "\n" + m_renamed);
        int marked = 0;
        for (int cell = 0; cell < DragFrame; ++cell)
            if (main.shpThumbnailSelect(cell).Visible() && ++marked > 0)
                say("chosen " + main.lbThumbnailFile(cell).Caption());
        if (main.lbStatusSelected.Caption() > "Selected 0")
            say(main.lbStatusSelected.Caption() == "Selected " + std::to_string(marked) ? "" : "chosen elsewhere");
    }

    void judgeFiles()
    {
        const Files old = std::exchange(m_now, read());
        Files all = old;
        all.insert(m_now.begin(), m_now.end());
        for (const auto& file : all)
            judgeFile(file.first, linesOf(file.first, old), linesOf(file.first, m_now));
    }

    void judgeFile(const std::string& path, Lines was, Lines is)
    {
        if (was == is)
            return;
        const auto balance = [before = was, now = is](const std::string& line) {
            return std::ranges::count(now, line) - std::ranges::count(before, line);
        };
        const std::string changes = "\n  was:" + joined(was) + "\n  is:" + joined(is);
        for (const std::string& line : was)
            check(balance(line) >= 0 || mayLose(path, line), path + " lost " + line, changes);
        for (const std::string& line : is)
            check(balance(line) <= 0 || mayGain(path, line, was.empty()), path + " got " + line, changes);
        std::erase_if(was, balance);
        std::erase_if(is, balance);
        check(was == is || !isList(path) || isOnShow(path), path + " has another order", changes);
    }

    bool mayLose(const std::string& path, const std::string& line) const
    {
        const std::string name = fs::path(path).filename();
        const bool isStart = said("start");
        const bool isRemoval = said("from the program?");
        if (isList(path)) {
            const bool isMoved = std::ranges::any_of(m_now, [&](const auto& file) {
                return said("> " + stemOf(file.first) + "\n") && std::ranges::count(file.second, line) > 0;
            });
            const bool isMove =
                said("Move photo") || said("for new group") || said("\"" + stemOf(path) + "\" group to");
            return (isOnShow(path) && ((isMove && isMoved) || (isChosen(line) && said("from this group?"))))
                || (isStart && isAllPhotosGroup(stemOf(path))) || said("this group -> " + stemOf(path) + "\n")
                || ((isStart || isRemoval) && !m_now.contains("Photo_Info/" + line + ".info"));
        }
        const std::string native = fs::path(m_library + path).lexically_normal();
        const bool isRemoved = path.find("/Removed/") != path.npos;
        if (path.ends_with(".csv")
            || (isRemoved && said("out to " + fromNativePath(fs::path(native).parent_path().string()))))
            return true;
        if (path.starts_with("../"))
            return said("frmExport")
                && (m_now.contains(path) || said("no photographs") || !m_now.contains("Photos/" + name)
                    || name.starts_with("tn_")) // may be an old thumbnail
                && !isIn("Photo_Info/", "PhotoPath=" + fromNativePath(native));
        if (path.starts_with("Photo_Info/") && m_now.contains(path))
            return true; // as far as what it has instead is right
        const std::string photograph = path.starts_with("Photo_Info/") ? stemOf(name) : name;
        const std::string link = line.substr(std::min<std::size_t>(line.find('=') + 1, line.size()));
        const bool isMissing = isStart && path.starts_with("Photo_Info/") && !m_now.contains("Photos/" + photograph)
            && !fs::exists((link.starts_with('\\') ? m_library : "") + toNativePath(link));
        return (isMissing || (isRemoval && isChosen(photograph)) || said("overwrite") || isRemoved)
            && isIn(path.substr(0, path.find('/')) + "/Removed/" + stemOf(photograph), line); // or with a number
    }

    bool mayGain(const std::string& path, const std::string& line, bool isNew) const
    {
        const bool isKnown = m_now.contains("Photo_Info/" + line + ".info") && (said("frmSearch") || said("frmImport"));
        const auto isTyped = [&](const Words& edit) {
            return edit.at("") == stemOf(path)
                && std::ranges::any_of(edit, [&](const auto& word) { return word.first + word.second == line; });
        };
        if (path.starts_with("Photo_Info/") && path.find("/Removed/") == path.npos)
            return isNew ? said("start") || said("frmImport") : std::ranges::any_of(m_edits, isTyped);
        if (isAllPhotosGroup(stemOf(path)) && (said("start") || isKnown))
            return true;
        return !isList(path) || (isOnShow(path) && said("frmImport") && isKnown)
            || (said("> " + stemOf(path) + "\n")
                && (isChosen(line) || isKnown || said("group to ... > " + stemOf(path) + "\n")));
    }

    // What stood in the boxes stands in the file of the photograph that they named.
    void judgeEdit()
    {
        const std::string name = m_ended[""] + ".info";
        const Lines lines =
            linesOf(m_now.contains("Photo_Info/" + name) ? "Photo_Info/" + name : "Photo_Info/Removed/" + name, m_now);
        for (const auto& [key, text] : std::exchange(m_ended, {{"", ""}})) {
            // The beginning of a long year is on show, and a title that was never given as a path of the system.
            const auto isHeld = [word = key + text, path = key + fromNativePath(text)](const std::string& line) {
                return line == word || line == path
                    || (word.starts_with("YEAR=") && word.size() == 9 && line.starts_with(word));
            };
            check(key.empty() || std::ranges::any_of(lines, isHeld), "the box held " + key + text + ", and " + name,
                joined(lines));
        }
    }

    bool said(const std::string& permit) const { return m_said.find(upper(permit)) != m_said.npos; }
    bool isOnShow(const std::string& list) const { return said("Group [" + stemOf(list) + "]"); }
    bool isChosen(const std::string& line) const
    {
        return said("chosen " + line + "\n") || said("chosen elsewhere") || said("several acts");
    }
    bool isIn(const std::string& path, const std::string& line) const
    {
        return std::ranges::any_of(m_now, [&](const auto& file) {
            return file.first.starts_with(path) && std::ranges::count(file.second, line) > 0;
        });
    }
    static bool isList(const std::string& path)
    {
        return path.starts_with("Photo_SlideGroups/") && path.ends_with(".lst");
    }
    static std::string stemOf(const std::string& path) { return fs::path(path).stem(); }
    static Lines linesOf(const std::string& path, const Files& files)
    {
        return files.contains(path) ? files.at(path) : Lines();
    }
    // Without the size of a picture, which is looked up anew.
    static Lines linesOf(const std::string& bytes)
    {
        Lines lines;
        std::istringstream stream(bytes);
        for (std::string line; std::getline(stream, line);)
            if (line != "\r" && !line.starts_with("Image"))
                lines.push_back(fromWindows1252(line.substr(0, line.find('\r'))));
        return lines;
    }
    static std::string joined(const Lines& lines)
    {
        std::string text;
        for (const std::string& line : lines)
            text += " " + line.substr(0, 100);
        return text;
    }
    void check(bool isRight, const std::string& wrong, const std::string& more = "")
    {
        m_wrong += isRight ? "" : wrong.substr(0, 200) + more + "\n";
    }

    Desktop& m_desktop;
    std::string m_library;
    Files m_now;
    bool m_isTouched = false;
    std::string m_said; // a line for each permit, in capitals
    frmMain* m_main = nullptr;
    std::string m_title;   // the begin of that of the group on show
    std::string m_renamed; // those that it may get with a new name
    bool m_choosing = false;
    Words m_edit{{"", ""}};
    Words m_ended{{"", ""}};
    std::vector<Words> m_edits; // since it was judged: a save may come in the middle of one
    std::string m_wrong;
};

} // namespace trovarium
