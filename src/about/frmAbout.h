// SPDX-License-Identifier: GPL-3.0-or-later
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

    // ---- layout: name, left, top, width, height (twips), caption ----

    PictureBox picIcon{this, {"picIcon", 360, 360, 960, 960}};
    Label lblTitle{this, {"lblTitle", 1560, 330, 4680, 570, "Trovarium"}};
    Label lblVersion{this, {"lblVersion", 1560, 960, 4680, 270}};
    Label lblDescription{this, {"lblDescription", 1560, 1410, 4680, 780}};
    Line Line1{this, {"Line1", 360, 2340, 5880, 0}};
    Label lblDisclaimer{this, {"lblDisclaimer", 360, 2520, 3900, 1260}};
    Button cmdOK{this, {"cmdOK", 4500, 2520, 1740, 420, "OK"}};
    Button cmdSysInfo{this, {"cmdSysInfo", 4500, 3060, 1740, 420, "&System Info..."}};

private:
    std::string systemInfoTool();

    Album& m_album;
    RegistryAccess m_registry;
};

} // namespace trovarium
