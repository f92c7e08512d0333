// The part of the main window that asks what becomes of a file that cannot be written.
#include <QMessageBox>
#include <QPushButton>

#include "windows/frmTorvel.h"

namespace veldra {

UnwrittenAnswer FrmTorvel::ask_unwritten(const std::string& text) {
    while (!ui_.unattended) {
        ui_.before_message();
        QMessageBox box(QMessageBox::Warning, QStringLiteral("VELDRA - Graphikdatei"),
                        QString::fromStdString(text), QMessageBox::NoButton, this);
        box.setObjectName(QStringLiteral("message_box"));
        box.setTextFormat(Qt::PlainText);
        const auto add = [&box](const QString& name, const QString& caption) {
            QPushButton* const button = box.addButton(caption, QMessageBox::AcceptRole);
            button->setObjectName(name);
            return button;
        };
        QPushButton* const again =
            add(QStringLiteral("cmd_wiederholen"), QStringLiteral("&Wiederholen"));
        QPushButton* const elsewhere =
            add(QStringLiteral("cmd_speichern_unter"), QStringLiteral("&Speichern unter..."));
        QPushButton* const discard =
            add(QStringLiteral("cmd_verwerfen"), QStringLiteral("&Verwerfen"));
        box.setDefaultButton(again);
        box.setEscapeButton(again);
        box.exec();
        ui_.after_message();
        if (ui_.unattended) {
            break;  // the box was taken away, not answered
        }
        if (box.clickedButton() == discard) {
            return {UnwrittenAnswer::Choice::discard, {}};
        }
        if (box.clickedButton() != elsewhere) {
            return {UnwrittenAnswer::Choice::again, {}};
        }
        const std::string path = system_path(choose_other_file());
        if (!path.empty()) {
            return {UnwrittenAnswer::Choice::elsewhere, path};
        }
    }
    return {};
}

}  // namespace veldra
