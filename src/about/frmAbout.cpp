// SPDX-License-Identifier: GPL-3.0-or-later

#include "about/frmAbout.h"

#include "platform/files/FileService.h"
#include "platform/pictures/PictureService.h"
#include "platform/system/Shell.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Failure.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/Deployment.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>

namespace trovarium {

namespace {

constexpr std::size_t LongestValue = 1023; // bytes
constexpr float TitleFont = 30;            // pixels

// A number is stored as "dword:" and eight hexadecimal digits.
std::optional<std::uint32_t> numberIn(std::string_view text)
{
    constexpr std::string_view Mark = "dword:";
    constexpr std::size_t Digits = 8;
    if (!text.starts_with(Mark) || text.size() != Mark.size() + Digits)
        return std::nullopt;
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data() + Mark.size(), text.data() + text.size(), number, 16);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

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

// The first value holds the tool's path, which is used without a check. The second one holds its folder.
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
    std::string stored;
    bool isThere = false;
    attempt([&] { isThere = KeyRoot == HkeyLocalMachine && m_registry.ReadValue(KeyName, SubKeyRef, stored); });
    if (!isThere || stored.size() > LongestValue)
        return false;
    const std::optional<std::uint32_t> number = numberIn(stored);
    KeyVal = number ? numberText(static_cast<std::int32_t>(*number)) : stored;
    return true;
}

} // namespace trovarium
