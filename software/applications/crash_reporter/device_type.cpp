#include "crash_reporter/device_type.h"

#include <QCoreApplication>

namespace {

enum DeviceType : quint8
{
    R4Pc = 2,
    R4_220 = 3,
    R4_120 = 4,
    R4_010 = 5,
    R4_210 = 6,
    R4_110 = 7,
};

int &currentCode()
{
    static int code = -1;
    return code;
}

} // namespace

QString deviceTypeName(quint8 code)
{
    switch (code) {
    case R4Pc:
        return QStringLiteral("R4-PC");
    case R4_220:
        return QStringLiteral("R4-220");
    case R4_120:
        return QStringLiteral("R4-120");
    case R4_010:
        return QStringLiteral("R4-010");
    case R4_210:
        return QStringLiteral("R4-210");
    case R4_110:
        return QStringLiteral("R4-110");
    default:
        return QCoreApplication::translate("DeviceType", "Unknown");
    }
}

void setCurrentDeviceType(quint8 code)
{
    if (currentCode() == -1)
        currentCode() = code;
}

int currentDeviceType()
{
    return currentCode();
}

QString currentDeviceTypeName()
{
    return deviceTypeName(static_cast<quint8>(currentDeviceType()));
}

int deviceLookupA(int code)
{
    switch (code) {
    case R4_220:
        return 4;
    case R4_210:
        return 2;
    default:
        return 1;
    }
}

int deviceLookupB(int code)
{
    return code == R4_210 ? 4000 : 2000;
}

int deviceLookupC(int code)
{
    return code == R4_010 ? 100000 : 520000;
}

int deviceLookupD(int code)
{
    switch (code) {
    case R4Pc:
    case R4_110:
        return 256;
    case R4_220:
        return 64;
    case R4_120:
    case R4_010:
        return 128;
    case R4_210:
        return 1024;
    default:
        return 0;
    }
}
