#pragma once

// The files that all pages share, as constants that the build makes from report.css and report.js.

#include <string_view>

namespace Bfri {

extern std::string_view const embeddedStyleSheet;
extern std::string_view const embeddedScript;
extern std::string_view const embeddedScriptHash; ///< its SHA-256 in hexadecimal

} // namespace Bfri
