#include "Start.h"
#include "support/PlainBitmap.h"

namespace trovarium {

// A library that takes in two photographs, finds them and brings them out again, by the entries of the main window.
class RoundTrip : public Start {
protected:
    template <class Dialog>
    void in(Menu& entry, const char* name, const std::function<void(Dialog&)>& story)
    {
        robot.whenShown(name, [&] {
            story(dynamic_cast<Dialog&>(*desktop.activeForm()));
            desktop.activeForm()->unload();
        });
        robot.choose(entry);
    }
    void fillIn(int cell, const std::string& title)
    {
        robot.doubleClick(main->imgThumbnail(cell));
        robot.click(main->cmdEditPhotoInfo);
        main->txtTitle.Text = title;
        main->txtYear.Text = "1998";
        for (TextBox* field :
            {&main->txtPhotographer, &main->txtPeople, &main->txtPlace, &main->txtEvent, &main->txtkeywords})
            field->Text = "Ren\u00E9";
        robot.click(main->cmdEditPhotoInfo);
        robot.click(main->pctAlbumList(0));
    }
    void prepare()
    {
        end();
        for (const fs::directory_entry& entry : fs::directory_iterator(folder.path()))
            fs::remove_all(entry.path());
        for (const std::string name :
            {"Library/Photos", "Library/Photo_Info", "Library/Photo_SlideGroups", "in", "out"})
            fs::create_directories(folder.native(name));
        COWReg().SetOWSetting("Trovarium", "Options", "FirstTime", "False");
        for (const std::string& name : names)
            folder.write("in/" + name, plainBitmap(20, static_cast<int>(name.size())));
        desktop.files().setModified(folder.inside("in\\" + names[0]), Instant(std::chrono::seconds(1000000000)));
        for (const std::string name : {"1.jpg", "2.jpg"}) {
            folder.write("Library/Photos/" + name, plainBitmap(4, 3));
            folder.write("Library/Photo_Info/" + name + ".info", "PhotoPath=\\Photos\\" + name + "\r\nTITLE=mine\r\n");
        }
        folder.write("Library/Photo_SlideGroups/Gr\u00F6\u00DFe \u5C71.lst", "1.jpg\r\n2.jpg\r\n");
    }
    std::size_t countIn(const std::string& place) const { return everything("Library/" + place + "/").size(); }
    void travel()
    {
        main = &program->mainWindow()();
        in<frmImport>(main->mnuFileImport, "frmImport", [&](frmImport& form) {
            form.Dir1.Path = folder.inside("in");
            form.chkOptions(3).Value = 0;
            for (int i = 0; i < form.File1.ListCount(); ++i)
                form.File1.setSelected(i, true);
            robot.click(form.cmdAddFile);
            robot.click(form.cmdImport);
        });
        fillIn(2, "\u00C4");
        fillIn(3, "\u00C4, \u5C71");
        in<frmSearch>(main->mnuEditSearchAppend, "frmSearch", [&](frmSearch& form) {
            form.txtTitle.Text = "\u00E4";
            robot.click(form.cmdSearch);
            form.cmbGroupName.Text = "Gr\u00F6\u00DFe \u5C71";
            robot.click(form.cmdSave);
        });
        robot.click(main->pctAlbumList(1));
        robot.click(main->imgThumbnail(2));
        robot.click(main->imgThumbnail(3), LeftButton, CtrlKey);
        in<frmExport>(main->mnuFileExport, "frmExport", [&](frmExport& form) {
            form.Dir1.Path = folder.inside("out");
            form.chkExport(2).Value = 1;
            robot.click(form.cmdExport);
            form.optExportInfo(0).Value = true;
            robot.click(form.cmdExport);
        });
    }

    const std::vector<std::string> names{"Z\u00FCrich.jpg", "\u5C71.bmp"};
    Robot robot{desktop};
    frmMain* main = nullptr;
};

TEST_F(RoundTrip, BringsOutWhatWentInAndKilledAtAnyWriteLosesNothingAndTheNextStartRepairsTheRest)
{
    if (getenv(FolderVariable)) {
        start();
        actUntilKilled(desktop.files(), [this] { travel(); });
    }
    int step = 0;
    int code = Killed;
    while (code == Killed) {
        SCOPED_TRACE(++step);
        prepare();
        const std::set<std::string> before = everything();
        code = runUntilKilled(folder.path(), 0, step);
        EXPECT_EQ(start(), 0);
        const std::set<std::string> after = everything();
        for (const std::string& text : before) {
            const auto kept = after.lower_bound(text); // a list may have grown
            EXPECT_TRUE(text.starts_with("config") || (kept != after.end() && kept->starts_with(text))) << text;
        }
        const auto photographs = countIn("Photos");
        EXPECT_EQ(countIn("Photo_Info"), photographs);
        EXPECT_EQ(album->group.PhotoCount, photographs);
        start(); // for the thumbnail of what had no information at the last
        EXPECT_EQ(countIn("Photo_Thumbnails"), photographs);
    }
    EXPECT_EQ(code, 0);
    EXPECT_GT(step, 40);
    for (const std::string& name : names) {
        EXPECT_EQ(folder.read("out/" + name), folder.read("in/" + name));
        EXPECT_EQ(fs::last_write_time(folder.native("out/" + name)), fs::last_write_time(folder.native("in/" + name)));
        EXPECT_EQ(folder.read("out/" + name + ".info"), folder.read("Library/Photo_Info/" + name + ".info"));
    }
    EXPECT_EQ(folder.read("out/Trovarium_Info.csv"),
        "CSV\r\nInfoFile,Event,Keywords,People,Photographer,Place,Title,Year,ImageWidth,ImageHeight\r\n"
        "Z\xFCrich.jpg.info,Ren\xE9,Ren\xE9,Ren\xE9,Ren\xE9,Ren\xE9,\xC4,1998,,\r\n"
        "\u5C71.bmp.info,Ren\u00E9,Ren\u00E9,Ren\u00E9,Ren\u00E9,Ren\u00E9,\u00C4, \u5C71,1998,,\r\n");
}

} // namespace trovarium
