// The text format of profiles and of the state file: INI sections and
// key=value lines. Reading keeps every good line and names each line it
// cannot use; writing gives lines that read back as exactly what was written.
#ifndef SIMINI_H
#define SIMINI_H

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <functional>

namespace SimIni
{

struct Line {
    int number = 0; // 1-based line number in the file
    QByteArrayView raw; // the line as it stands, without its line end
    QString key; // "<Section>/<name>", or "<name>" outside a section
    QString value;
};

struct Reader {
    // Called for every key=value line.
    std::function<void(const Line&)> setting;
    // Called for every line that is neither a setting, a section, a comment
    // nor blank, with the reason.
    std::function<void(const Line&, const QString&)> rejected;
};

// Reads `data`, whose first line has the number `firstLine`. `section` is the
// section in force before the first line and after the last one, so that text
// appended to a file can be read on its own.
void read(QByteArrayView data, int firstLine, QString& section, const Reader& reader);

// "[Section]\n" for a key, or the empty text when the key has no section;
// `section` is the section in force and is updated.
QByteArray sectionFor(const QString& key, QString& section);
// "name=value\n" for a key, in the section sectionFor() gave.
QByteArray setting(const QString& key, const QString& value);

} // namespace SimIni

#endif // SIMINI_H
