#include "about/frmAbout.h"

#include "platform/files/FileService.h"
#include "platform/pictures/PictureService.h"
#include "platform/system/Shell.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Failure.h"
#include "store/Album.h"
#include "store/Deployment.h"

#include <array>
#include <utility>

namespace trovarium {

namespace {

constexpr std::size_t LongestValue = 1024; // bytes
constexpr float TitleFont = 30;            // pixels, as all below

} // namespace

frmAbout::frmAbout(Desktop& desktop, Album& album, RegistryAccess registry)
    : Form(desktop, {.Name = "frmAbout", .Caption = "About Trovarium", .Width = 6600, .Height = 4050})
    , m_album(album)
    , m_registry(std::move(registry))
{
    Picture = desktop.pictures().artwork("background");
    Icon = desktop.pictures().artwork("icon");
    picIcon.BackColor = GroundBehindIcon;
    picIcon.Picture = desktop.pictures().artwork("icon");
    picIcon.AccessibleName = "Trovarium";
    lblTitle.FontSize = TitleFont;
    lblTitle.Bold = true;
    lblDescription.Caption = std::string(Maker).append("\n").append(WebSite).append("\n").append(SupportAddress);
    lblDisclaimer.Caption = std::string(LegalNotice);
    lblDescription.WordWrap = true;
    lblDisclaimer.WordWrap = true;
    Line1.BorderColor = SoftWhite;
    cmdOK.Default = true;
    cmdOK.Cancel = true;

    on(Load, this, &frmAbout::Form_Load);
    on(cmdOK.Click, this, &frmAbout::cmdOK_Click);
    on(cmdSysInfo.Click, this, &frmAbout::cmdSysInfo_Click);
}

void frmAbout::Form_Load()
{
    lblVersion.Caption = "Version " TROVARIUM_VERSION;
}

void frmAbout::cmdOK_Click()
{
    unload();
}

void frmAbout::cmdSysInfo_Click()
{
    StartSysInfo();
}

void frmAbout::StartSysInfo()
{
    if (attempt([&] { startProgram(systemInfoTool()); }))
        desktop().prompts().messageBox("System Information Is Unavailable At This Time", Message::Error, "");
}

// The first value is the tool's path, used without a check; the second one its folder.
std::string frmAbout::systemInfoTool()
{
    std::string path;
    if (GetKeyValue(HkeyLocalMachine, "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH", path))
        return path;
    if (GetKeyValue(HkeyLocalMachine, "SOFTWARE\\Microsoft\\Shared Tools Location", "MSINFO", path)
        && m_album.files.exists(path + "\\MSINFO32.EXE"))
        return path + "\\MSINFO32.EXE";
    throw Failure(FailureKind::FileNotFound);
}

bool frmAbout::GetKeyValue(
    std::uint32_t KeyRoot, std::string_view KeyName, std::string_view SubKeyRef, std::string& KeyVal)
{
    KeyVal.clear();
    std::optional<RegistryValue> value;
    attempt([&] { value = m_registry.QueryValue(KeyRoot, KeyName, SubKeyRef, LongestValue); });
    if (!value)
        return false;
    std::string bytes = std::move(value->bytes);
    if (bytes.ends_with('\0'))
        bytes.pop_back();
    if (value->type == RegistryValue::String) {
        KeyVal = std::move(bytes);
    } else {
        std::uint32_t number = 0;
        for (std::size_t i = bytes.size(); i-- > 0;)
            number = number << 8 | static_cast<unsigned char>(bytes[i]);
        KeyVal = std::to_string(static_cast<std::int32_t>(number));
    }
    return true;
}

} // namespace trovarium
