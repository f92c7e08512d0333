#include "windows/qt/system_paths.h"

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>
#include <QString>

namespace veldra {

namespace {

std::string system_bytes(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

std::string folder(QStandardPaths::StandardLocation location) {
    return system_bytes(QStandardPaths::writableLocation(location));
}

}  // namespace

SystemFolders system_folders() {
    return {.documents = folder(QStandardPaths::DocumentsLocation),
            .windows = folder(QStandardPaths::GenericConfigLocation),
            .program = system_bytes(QCoreApplication::applicationDirPath())};
}

}  // namespace veldra
