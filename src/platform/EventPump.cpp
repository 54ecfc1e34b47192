#include "platform/EventPump.h"

#include <QCoreApplication>

namespace tarvolin::platform {

void pumpEvents() { QCoreApplication::processEvents(); }

}  // namespace tarvolin::platform
