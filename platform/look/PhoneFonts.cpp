#include "PhoneFonts.h"

#include <fontconfig/fontconfig.h>

namespace {

/// Where fonts and their caches lie, and how a small screen draws them.
constexpr const char* configuration = R"(<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <dir>/usr/share/fonts</dir>
  <dir>/usr/local/share/fonts</dir>
  <dir prefix="xdg">fonts</dir>
  <cachedir>/var/cache/fontconfig</cachedir>
  <cachedir prefix="xdg">fontconfig</cachedir>
  <match target="pattern">
    <edit name="antialias" mode="append"><bool>true</bool></edit>
    <edit name="hintstyle" mode="append"><const>hintslight</const></edit>
    <edit name="rgba" mode="append"><const>none</const></edit>
  </match>
</fontconfig>
)";

} // namespace

void usePhoneFonts() {
    FcConfig* fonts = FcConfigCreate();
    const auto* text = reinterpret_cast<const FcChar8*>(configuration);
    const FcFontSet* found = nullptr;
    if (FcConfigParseAndLoadFromMemory(fonts, text, FcTrue) && FcConfigBuildFonts(fonts))
        found = FcConfigGetFonts(fonts, FcSetSystem);
    if (found && found->nfont > 0)
        FcConfigSetCurrent(fonts); // keeps it
    FcConfigDestroy(fonts);
}
