#include "simini.h"

#include <QStringDecoder>

namespace SimIni
{

namespace
{

const QByteArrayView byteOrderMark("\xEF\xBB\xBF");

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

QByteArrayView trimmed(QByteArrayView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

// UTF-8 when the bytes are valid UTF-8, Latin-1 otherwise.
QString decoded(QByteArrayView bytes)
{
    bool ascii = true;
    for (char c : bytes)
        ascii = ascii && uchar(c) < 0x80;
    if (ascii)
        return QString::fromLatin1(bytes);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// Names may carry %XX escapes for bytes that would break the line.
QString decodedName(QByteArrayView name)
{
    if (!name.contains('%'))
        return decoded(name);
    QByteArray bytes;
    for (qsizetype i = 0; i < name.size(); ++i) {
        const int high = i + 2 < name.size() && name.at(i) == '%' ? hexDigit(name.at(i + 1)) : -1;
        const int low = high >= 0 ? hexDigit(name.at(i + 2)) : -1;
        if (low >= 0) {
            bytes += char(high * 16 + low);
            i += 2;
        } else {
            bytes += name.at(i);
        }
    }
    return decoded(bytes);
}

QByteArray encodedName(const QString& name)
{
    QByteArray out;
    for (char c : name.toUtf8()) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
            || c == '_' || c == '-' || c == '.';
        if (plain)
            out += c;
        else
            out += '%' + QByteArray::number(uchar(c), 16).rightJustified(2, '0').toUpper();
    }
    return out;
}

char unescaped(char c)
{
    switch (c) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case '0':
        return '\0';
    default:
        return c;
    }
}

// The value after '=': a quoted text with backslash escapes, or plain text up
// to a ';' comment. False when a quote is not closed or text follows it.
bool parseValue(QByteArrayView rest, QString& value)
{
    rest = trimmed(rest);
    QByteArray bytes;
    if (rest.startsWith('"')) {
        qsizetype i = 1;
        for (; i < rest.size() && rest.at(i) != '"'; ++i) {
            if (rest.at(i) == '\\' && i + 1 < rest.size())
                bytes += unescaped(rest.at(++i));
            else
                bytes += rest.at(i);
        }
        if (i >= rest.size())
            return false;
        const QByteArrayView after = trimmed(rest.sliced(i + 1));
        if (!after.isEmpty() && !after.startsWith(';') && !after.startsWith('#'))
            return false;
    } else {
        for (qsizetype i = 0; i < rest.size() && rest.at(i) != ';'; ++i) {
            if (rest.at(i) == '\\' && i + 1 < rest.size())
                bytes += unescaped(rest.at(++i));
            else
                bytes += rest.at(i);
        }
        bytes = trimmed(bytes).toByteArray();
    }
    value = decoded(bytes);
    return true;
}

} // namespace

void read(QByteArrayView data, int firstLine, QString& section, const Reader& reader)
{
    int number = firstLine;
    for (qsizetype start = 0; start < data.size(); ++number) {
        qsizetype end = data.indexOf('\n', start);
        if (end < 0)
            end = data.size();
        Line line;
        line.number = number;
        line.raw = data.sliced(start, end - start);
        start = end + 1;
        if (line.raw.endsWith('\r'))
            line.raw.chop(1);
        QByteArrayView text = line.raw;
        if (number == 1 && text.startsWith(byteOrderMark))
            text = text.sliced(byteOrderMark.size());
        if (text.contains('\0')) {
            reader.rejected(line, QStringLiteral("holds a NUL byte"));
            continue;
        }
        text = trimmed(text);
        if (text.isEmpty() || text.startsWith(';') || text.startsWith('#'))
            continue;
        if (text.startsWith('[')) {
            const QByteArrayView name = trimmed(text.sliced(1).chopped(text.endsWith(']') ? 1 : 0));
            if (!text.endsWith(']') || name.isEmpty()) {
                reader.rejected(line, QStringLiteral("is not a [section] line"));
                continue;
            }
            section = decodedName(name);
            if (section == QLatin1String("General"))
                section.clear();
            continue;
        }
        const qsizetype equals = text.indexOf('=');
        const QByteArrayView name = equals > 0 ? trimmed(text.first(equals)) : QByteArrayView();
        if (name.isEmpty()) {
            reader.rejected(line, QStringLiteral("is not a key=value line"));
            continue;
        }
        if (!parseValue(text.sliced(equals + 1), line.value)) {
            reader.rejected(line, QStringLiteral("has a quote that is not closed properly"));
            continue;
        }
        line.key = section.isEmpty() ? decodedName(name) : section + QLatin1Char('/') + decodedName(name);
        reader.setting(line);
    }
}

QByteArray sectionFor(const QString& key, QString& section)
{
    const qsizetype slash = key.indexOf(QLatin1Char('/'));
    const QString wanted = slash < 0 ? QString() : key.left(slash);
    if (wanted == section)
        return QByteArray();
    section = wanted;
    return '[' + (wanted.isEmpty() ? QByteArray("General") : encodedName(wanted)) + "]\n";
}

QByteArray setting(const QString& key, const QString& value)
{
    const qsizetype slash = key.indexOf(QLatin1Char('/'));
    QByteArray line = encodedName(key.mid(slash + 1)) + '=';
    const QByteArray bytes = value.toUtf8();
    bool quote
        = !bytes.isEmpty() && (isBlank(bytes.front()) || isBlank(bytes.back()) || bytes.front() == '"');
    for (char c : bytes)
        quote = quote || uchar(c) < 0x20 || c == ';' || c == '\\' || c == '"' || c == '#';
    if (!quote)
        return line + bytes + '\n';
    line += '"';
    for (char c : bytes) {
        switch (c) {
        case '\n':
            line += "\\n";
            break;
        case '\r':
            line += "\\r";
            break;
        case '\t':
            line += "\\t";
            break;
        case '\0':
            line += "\\0";
            break;
        case '"':
        case '\\':
            line += '\\';
            line += c;
            break;
        default:
            line += c;
        }
    }
    return line + "\"\n";
}

} // namespace SimIni
