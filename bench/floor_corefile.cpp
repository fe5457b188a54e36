// The least a windowless Qt program that writes a text file can do: start a
// core application, write a report-sized Latin-1 text to the file named by
// its first argument, and end. The report benchmark measures against it.
#include <QCoreApplication>
#include <QFile>
#include <QString>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc < 2)
        return 1;
    QString text;
    for (int line = 0; text.size() < 5500; ++line)
        text += QStringLiteral("Line %1: %2 ").arg(line).arg(line * 0.5) + QChar(0xB0) + QLatin1String("C\n");
    QFile file(QString::fromLocal8Bit(argv[1]));
    if (!file.open(QIODevice::WriteOnly))
        return 1;
    file.write(text.toLatin1());
    return 0;
}
