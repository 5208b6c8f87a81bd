// SPDX-License-Identifier: GPL-3.0-or-later

// How long a list on show takes until the last change is painted, in milliseconds.
//
//   bench_lists add|sorted|remove|write|select COUNT TIMES   so many times, each of so many entries one by one, with
//                                                            DoEvents behind each

#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/ListBox.h"

#include <chrono>
#include <iostream>
#include <map>
#include <string>

namespace trovarium {

namespace {

class ListForm : public Form {
public:
    explicit ListForm(Desktop& desktop)
        : Form(desktop, {.Name = "ListForm", .Width = 5000, .Height = 6000})
    {
        List1.MultiSelect = true;
    }

    Label lbCount{this, {.Name = "lbCount", .Top = 5000, .Width = 3000, .Height = 300}};
    ListBox List1{this, {.Name = "List1", .Width = 4000, .Height = 5000}};
    ListBox List2{this, {.Name = "List2", .Width = 1000, .Height = 1000, .Visible = false}};
};

// Names in no order, as long as paths are.
std::string entry(int number)
{
    return "/home\\ann\\Pictures\\Summer\\IMG" + std::to_string(number * 7919 % 100003) + ".jpg";
}

void add(ListForm& form, int entries)
{
    for (int i = 0; i < entries; ++i) {
        form.List1.AddItem(entry(i));
        form.desktop().DoEvents();
    }
}

// Every second one, from the first on.
void remove(ListForm& form, int entries)
{
    for (int i = 0; i < entries / 2; ++i) {
        form.List1.RemoveItem(i);
        form.desktop().DoEvents();
    }
}

void write(ListForm& form, int entries)
{
    for (int i = 0; i < entries; ++i) {
        form.lbCount.Caption = std::to_string(i);
        form.List1.setList(i, "IMG" + std::to_string(i) + ".jpg");
        form.List2.setList(i, "/home\\ann\\Pictures\\Summer\\");
        form.desktop().DoEvents();
    }
}

void select(ListForm& form, int entries)
{
    for (int i = 0; i < entries; i += 2) {
        form.List1.setSelected(i, true);
        form.desktop().DoEvents();
    }
}

template <class Work>
double toPainted(ListForm& form, Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    form.desktop().repaintOnly();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void startWith(ListForm& form, int entries)
{
    form.List1.Clear();
    form.List2.Clear();
    for (int i = 0; i < entries; ++i)
        form.List1.AddItem(entry(i));
    form.desktop().repaintOnly();
}

} // namespace

} // namespace trovarium

int main(int argc, char** argv)
{
    using namespace trovarium;

    if (argc != 4) {
        std::cerr << "usage: bench_lists add|sorted|remove|write|select COUNT TIMES\n";
        return 2;
    }
    const std::string job = argv[1];
    const int entries = std::stoi(argv[2]);
    const int times = std::stoi(argv[3]);
    FileService files;
    Desktop desktop(argc, argv, files, Pace::Paced);
    ListForm form(desktop);
    form.show();
    desktop.repaintOnly();
    const std::map<std::string, void (*)(ListForm&, int)> jobs{
        {"add", add}, {"sorted", add}, {"remove", remove}, {"write", write}, {"select", select}};
    form.List1.Sorted = job == "sorted";
    double taken = 0;
    for (int i = 0; i < times; ++i) {
        startWith(form, jobs.at(job) == add ? 0 : entries);
        taken += toPainted(form, [&] { jobs.at(job)(form, entries); });
    }
    std::cout << taken << '\n';
    return 0;
}
