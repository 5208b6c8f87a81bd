#pragma once

#include "platform/system/RegistryAccess.h"
#include "platform/toolkit/Buttons.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/Shape.h"

#include <string>
#include <string_view>

namespace trovarium {

struct Album;

// Shows the program's version and maker, and starts the system's information tool.
class frmAbout : public Form {
public:
    frmAbout(Desktop& desktop, Album& album, RegistryAccess registry = RegistryAccess());

    // Starts the tool named in the settings store, or shows a message.
    void StartSysInfo();
    // Reads a value of the settings store as text; false and empty if it can't be read.
    bool GetKeyValue(std::uint32_t KeyRoot, std::string_view KeyName, std::string_view SubKeyRef, std::string& KeyVal);

    void Form_Load();
    void cmdOK_Click();
    void cmdSysInfo_Click();

    // ---- layout, in twips ----

    PictureBox picIcon{this, {.Name = "picIcon", .Left = 360, .Top = 360, .Width = 960, .Height = 960}};
    Label lblTitle{
        this, {.Name = "lblTitle", .Left = 1560, .Top = 330, .Width = 4680, .Height = 570, .Caption = "Trovarium"}};
    Label lblVersion{this, {.Name = "lblVersion", .Left = 1560, .Top = 960, .Width = 4680, .Height = 270}};
    Label lblDescription{this, {.Name = "lblDescription", .Left = 1560, .Top = 1410, .Width = 4680, .Height = 780}};
    Line Line1{this, {.Name = "Line1", .Left = 360, .Top = 2340, .Width = 5880, .Height = 0}};
    Label lblDisclaimer{this, {.Name = "lblDisclaimer", .Left = 360, .Top = 2520, .Width = 3900, .Height = 1260}};
    Button cmdOK{this, {.Name = "cmdOK", .Left = 4500, .Top = 2520, .Width = 1740, .Height = 420, .Caption = "OK"}};
    Button cmdSysInfo{this,
        {.Name = "cmdSysInfo", .Left = 4500, .Top = 3060, .Width = 1740, .Height = 420, .Caption = "&System Info..."}};

private:
    std::string systemInfoTool();

    Album& m_album;
    RegistryAccess m_registry;
};

} // namespace trovarium
