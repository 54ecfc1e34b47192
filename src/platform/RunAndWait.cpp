#include "platform/RunAndWait.h"

#include <QEventLoop>

#include "platform/BatchRunner.h"

namespace tarvolin::platform {

bool RunAndWait(const std::string& file, const std::string& folder, int showState) {
    BatchRunner runner;
    QEventLoop loop;
    QObject::connect(&runner, &BatchRunner::Finished, &loop, &QEventLoop::quit);
    if (!runner.Start(file, folder, showState)) return false;
    // A batch that ended inside Start has already emitted Finished; otherwise sleep in the
    // event loop until it does (or the program quits, which ends every event loop).
    if (runner.Running()) loop.exec();
    return true;
}

}  // namespace tarvolin::platform
