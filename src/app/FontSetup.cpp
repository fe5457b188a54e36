#include "app/FontSetup.h"

#include <QtGlobal>

#include <fontconfig/fontconfig.h>

namespace
{
const char configuration[] = R"(<?xml version="1.0"?>
<fontconfig>
  <dir>/usr/share/fonts</dir>
  <dir>/usr/local/share/fonts</dir>
  <dir prefix="xdg">fonts</dir>
  <dir>~/.fonts</dir>
  <cachedir>/var/cache/fontconfig</cachedir>
  <cachedir prefix="xdg">fontconfig</cachedir>
  <cachedir>~/.fontconfig</cachedir>
  <alias binding="same">
    <family>Arial</family>
    <accept><family>Liberation Sans</family><family>Arimo</family><family>Albany AMT</family></accept>
  </alias>
  <alias>
    <family>sans-serif</family>
    <prefer><family>DejaVu Sans</family><family>Liberation Sans</family></prefer>
  </alias>
  <match target="pattern">
    <edit name="antialias" mode="append"><bool>true</bool></edit>
    <edit name="hintstyle" mode="append"><const>hintslight</const></edit>
    <edit name="lcdfilter" mode="append"><const>lcddefault</const></edit>
  </match>
</fontconfig>
)";
} // namespace

void useOwnFontConfiguration()
{
    if (qEnvironmentVariableIsSet("FONTCONFIG_FILE") || qEnvironmentVariableIsSet("FONTCONFIG_PATH"))
        return;
    FcConfig* config = FcConfigCreate();
    if (!config)
        return;
    if (FcConfigParseAndLoadFromMemory(config, reinterpret_cast<const FcChar8*>(configuration), FcFalse)
        && FcConfigBuildFonts(config))
        FcConfigSetCurrent(config);
    // The current configuration holds a reference of its own.
    FcConfigDestroy(config);
}
