// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace trovarium {

// What a deployment of the program fills in; nothing else tells who made it and how to reach them.
inline constexpr std::string_view Maker = "Ombrelane Works Ltd.";
inline constexpr std::string_view WebSite = "https://www.ombrelane.example";
inline constexpr std::string_view SupportAddress = "support@ombrelane.example";
inline constexpr std::string_view LegalNotice =
    "This program is free software under the GNU General Public License, version 3 or later. It comes without any "
    "warranty. Keep a second copy of pictures that matter to you.";

} // namespace trovarium
