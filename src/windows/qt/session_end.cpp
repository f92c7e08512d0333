#include "windows/qt/session_end.h"

#include <QGuiApplication>
#include <QSessionManager>
#include <utility>

namespace veldra {

void follow_session_end(const QGuiApplication& application, QObject& context,
                        std::function<bool()> ended) {
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &context,
                     [ended = std::move(ended)](QSessionManager& manager) {
                         manager.setRestartHint(QSessionManager::RestartNever);
                         if (!ended() && !manager.isPhase2()) {
                             manager.requestPhase2();
                         }
                     });
}

}  // namespace veldra
