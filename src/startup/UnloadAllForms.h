#pragma once

#include <string_view>

namespace trovarium {

class Desktop;

// Unloads every loaded form whose name differs from `ExceptName`.
void UnloadAllForms(Desktop& desktop, std::string_view ExceptName);

} // namespace trovarium
