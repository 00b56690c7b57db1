#include "Platform/UIKit/UIDevice.h"

#include <QString>
#include <QSysInfo>

namespace anadrome {

const UIDevice& UIDevice::currentDevice() {
    static const UIDevice device;
    return device;
}

std::string UIDevice::name() const {
    return QSysInfo::machineHostName().toStdString();
}

std::string UIDevice::systemVersion() const {
    return QSysInfo::prettyProductName().toStdString();
}

} // namespace anadrome
