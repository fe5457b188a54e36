#include "program/AppMode.h"
#include "program/WindowModule.h"
#include "report/SystemReport.h"
#include "report/WriteDefaultValues.h"

#include <QCoreApplication>

int main(int argc, char* argv[])
{
    switch (chooseMode(argc, argv)) {
    case AppMode::SystemReport: {
        QCoreApplication app(argc, argv);
        writeReportFile(QString::fromLocal8Bit(argv[2]), SystemReport);
        return 0;
    }
    case AppMode::FactoryDefaults: {
        QCoreApplication app(argc, argv);
        WriteDefaultValues();
        return 0;
    }
    case AppMode::Interactive:
        break;
    }
    return runWindowModule(&argc, argv);
}
