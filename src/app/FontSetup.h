// The fonts the program asks fontconfig for.
#ifndef FONTSETUP_H
#define FONTSETUP_H

// Gives fontconfig a configuration of the program's own, to be called before
// the application object exists. fontconfig otherwise reads every rule file
// of the system at the first text drawn, mostly substitutions for families
// and languages the program never shows. This one keeps the system's font
// folders and caches, the fonts that stand in for Arial with its metrics, and
// the usual rendering: antialiased, slight hinting, the default LCD filter.
// Of the system's fonts it takes only those families and DejaVu Sans, for
// the characters they lack: Qt lists and sorts every font fontconfig has, at
// the first text drawn. FONTCONFIG_FILE or FONTCONFIG_PATH in the
// environment leave fontconfig as it is, and so does a configuration it
// cannot take or one that finds none of those fonts.
void useOwnFontConfiguration();

#endif // FONTSETUP_H
