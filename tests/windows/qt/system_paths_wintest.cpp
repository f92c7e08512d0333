#include <QByteArray>
#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "windows/qt/system_paths.h"

namespace {

QString text(const std::string& bytes) {
    return QFile::decodeName(QByteArray(bytes.c_str()));
}

}  // namespace

/// The folders follow the desktop's own setting, here in a configuration folder of the test.
class SystemPathsTest : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init() {
        QVERIFY(root_.isValid());
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(root_.path()));
    }

    void documents_follow_the_desktops_setting() {
        QFile setting(root_.filePath(QStringLiteral("user-dirs.dirs")));
        QVERIFY(setting.open(QIODevice::WriteOnly));
        setting.write("XDG_DOCUMENTS_DIR=\"" + QFile::encodeName(root_.path()) + "/Akten\"\n");
        setting.close();
        QCOMPARE(text(veldra::system_folders().documents), root_.filePath(QStringLiteral("Akten")));
    }

    void windows_is_the_configuration_folder() {
        QCOMPARE(text(veldra::system_folders().windows), root_.path());
    }

    void program_is_where_the_program_stands() {
        QCOMPARE(text(veldra::system_folders().program), QCoreApplication::applicationDirPath());
    }

 private:
    QTemporaryDir root_;
};

QTEST_GUILESS_MAIN(SystemPathsTest)
#include "system_paths_wintest.moc"
