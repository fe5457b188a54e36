#include "program/AppMode.h"

#include <QFile>

#include <cstring>

AppMode chooseMode(int argc, const char* const* argv)
{
    if (argc == 3 && std::strcmp(argv[1], "--systemreport") == 0)
        return AppMode::SystemReport;
    if (argc == 2 && std::strcmp(argv[1], "--factorydefault") == 0)
        return AppMode::FactoryDefaults;
    return AppMode::Interactive;
}

bool writeReportFile(const QString& path, const std::function<QString()>& report)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    // The report is 8-bit text: the degree sign is the single byte 0xB0.
    file.write(report().toLatin1());
    return true;
}
