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
  <selectfont>
    <acceptfont>
      <pattern><patelt name="family"><string>Liberation Sans</string></patelt></pattern>
      <pattern><patelt name="family"><string>Arimo</string></patelt></pattern>
      <pattern><patelt name="family"><string>Albany AMT</string></patelt></pattern>
      <pattern><patelt name="family"><string>DejaVu Sans</string></patelt></pattern>
    </acceptfont>
    <rejectfont><pattern/></rejectfont>
  </selectfont>
  <match target="pattern">
    <edit name="antialias" mode="append"><bool>true</bool></edit>
    <edit name="hintstyle" mode="append"><const>hintslight</const></edit>
    <edit name="lcdfilter" mode="append"><const>lcddefault</const></edit>
  </match>
</fontconfig>
)";

bool hasFonts(FcConfig* config)
{
    const FcFontSet* fonts = FcConfigGetFonts(config, FcSetSystem);
    return fonts && fonts->nfont > 0;
}
} // namespace

void useOwnFontConfiguration()
{
    if (qEnvironmentVariableIsSet("FONTCONFIG_FILE") || qEnvironmentVariableIsSet("FONTCONFIG_PATH"))
        return;
    FcConfig* config = FcConfigCreate();
    if (!config)
        return;
    // A system with none of the families the program draws with keeps its
    // own configuration, and its text.
    if (FcConfigParseAndLoadFromMemory(config, reinterpret_cast<const FcChar8*>(configuration), FcFalse)
        && FcConfigBuildFonts(config) && hasFonts(config))
        FcConfigSetCurrent(config);
    // The current configuration holds a reference of its own.
    FcConfigDestroy(config);
}
