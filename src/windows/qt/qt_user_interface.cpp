#include "windows/qt/qt_user_interface.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QThread>
#include <QTreeView>
#include <QWindow>

#include "text/shown_text.h"

namespace veldra {

namespace {

QMessageBox::Icon box_icon(MessageStyle style) {
    switch (style) {
        case MessageStyle::critical:
            return QMessageBox::Critical;
        case MessageStyle::question_yes_no:
        case MessageStyle::question_no_yes:
            return QMessageBox::Question;
        case MessageStyle::exclamation:
            return QMessageBox::Warning;
        case MessageStyle::information:
            return QMessageBox::Information;
    }
    return QMessageBox::NoIcon;
}

bool is_question(MessageStyle style) {
    return style == MessageStyle::question_yes_no || style == MessageStyle::question_no_yes;
}

/// Shows a box and waits; true for Yes on a question, true otherwise.
bool show_box(MessageStyle style, const std::string& title, const std::string& text,
              QWidget* window) {
    QMessageBox box(box_icon(style), QString::fromStdString(title), QString::fromStdString(text),
                    QMessageBox::NoButton, window);
    box.setTextFormat(Qt::PlainText);
    box.setObjectName(QStringLiteral("message_box"));
    if (!is_question(style)) {
        box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
        box.exec();
        return true;
    }
    QPushButton* const yes = box.addButton(QStringLiteral("&Ja"), QMessageBox::YesRole);
    QPushButton* const no = box.addButton(QStringLiteral("&Nein"), QMessageBox::NoRole);
    box.setDefaultButton(style == MessageStyle::question_yes_no ? yes : no);
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes;
}

}  // namespace

QtUserInterface::QtUserInterface(QWidget* window, QWidget* picture)
    : window_(window), picture_(picture) {}

bool QtUserInterface::message_box(MessageStyle style, const std::string& title,
                                  const std::string& text) {
    if (unattended) {
        if (!is_question(style)) {
            tell_on_terminal(text);
        }
        return !is_question(style);
    }
    if (before_message) {
        before_message();
    }
    const bool yes = show_box(style, title, text, window_);
    if (after_message) {
        after_message();
    }
    return yes;
}

void QtUserInterface::set_mouse_pointer(int pointer) {
    if (!picture_) {
        return;
    }
    show_mouse_pointer(*picture_, pointer);
    if (unattended) {
        return;
    }
    // The pointer is to change before the work that follows; the user's input waits for its end.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void wait_until_shown(const QWidget& window, const std::function<bool()>& goes_on) {
    constexpr int longest = 1000;  // milliseconds
    constexpr unsigned long pause = 5;
    QElapsedTimer waited;
    waited.start();
    const auto shown = [&window] {
        return window.windowHandle() != nullptr && window.windowHandle()->isExposed();
    };
    while (!shown() && goes_on() && waited.elapsed() < longest) {
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        if (!shown()) {
            QThread::msleep(pause);
        }
    }
}

void show_fatal_error(QWidget* window, const std::string& message) {
    QtUserInterface(window, nullptr).message_box(MessageStyle::critical, "VELDRA", message);
}

void show_mouse_pointer(QWidget& widget, int pointer) {
    constexpr int cross = 2;
    constexpr int hourglass = 11;
    constexpr int moving = 99;
    switch (pointer) {
        case cross:
            widget.setCursor(Qt::CrossCursor);
            break;
        case hourglass:
            widget.setCursor(Qt::WaitCursor);
            break;
        case moving:
            widget.setCursor(Qt::SizeAllCursor);
            break;
        default:
            widget.unsetCursor();
    }
}

QStringList to_name_filters(std::string_view filter) {
    const QStringList parts =
        QString::fromUtf8(filter.data(), static_cast<qsizetype>(filter.size()))
            .split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString& pattern = parts[i + 1];
        filters << parts[i] + QStringLiteral(" (") +
                       (pattern == QLatin1String("*.*") ? QStringLiteral("*") : pattern) +
                       QLatin1Char(')');
    }
    return filters;
}

namespace {

/// Size, type and date of the files get the room that they need, in a dialog of this width.
void show_whole_columns(QFileDialog& dialog) {
    for (QTreeView* list : dialog.findChildren<QTreeView*>()) {
        for (int column = 1; column < list->header()->count(); ++column) {
            list->header()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
        }
    }
    constexpr QSize usual_size(760, 480);
    const QSize room = dialog.screen()->availableSize();
    dialog.resize(usual_size.boundedTo(room));
}

/// "png" of "PNG-Bild (*.png) (*.png)"; "" where all files are meant.
QString ending_of_filter(const QString& text) {
    const QString pattern = text.mid(text.lastIndexOf(QLatin1Char('(')) + 1).chopped(1);
    const QString ending = pattern.mid(pattern.lastIndexOf(QLatin1Char('.')) + 1);
    return ending == QLatin1String("*") ? QString() : ending;
}

/// Runs a file dialog with German texts; the user's choice or "".
QString run_file_dialog(QFileDialog& dialog, const FileQuestion& question, const QString& accept,
                        QString& folder) {
    dialog.setObjectName(question.name);
    dialog.setWindowTitle(question.title);
    // The texts name their patterns themselves; those added behind them stay out of sight.
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilters(to_name_filters(question.filter));
    dialog.setLabelText(QFileDialog::Accept, accept);
    dialog.setLabelText(QFileDialog::Reject, QStringLiteral("Abbrechen"));
    dialog.setLabelText(QFileDialog::LookIn, QStringLiteral("Suchen in:"));
    dialog.setLabelText(QFileDialog::FileName, QStringLiteral("Datei&name:"));
    dialog.setLabelText(QFileDialog::FileType, QStringLiteral("Dateityp:"));
    show_whole_columns(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return {};
    }
    const QString file = dialog.selectedFiles().constFirst();
    folder = QFileInfo(file).path();
    return file;
}

void begin_in(QFileDialog& dialog, const QString& folder) {
    const bool there = !folder.isEmpty() && QFileInfo(folder).isDir();
    dialog.setDirectory(there ? folder : QDir::currentPath());
}

}  // namespace

QString ask_for_existing_file(QWidget* window, const FileQuestion& question, QString& folder) {
    QFileDialog dialog(window);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    begin_in(dialog, folder);
    return run_file_dialog(dialog, question, QStringLiteral("Ö&ffnen"), folder);
}

QString ask_for_new_file(QWidget* window, const FileQuestion& question, const QString& proposed,
                         QString& folder) {
    QFileDialog dialog(window);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(ending_of_filter(to_name_filters(question.filter).value(0)));
    QObject::connect(
        &dialog, &QFileDialog::filterSelected, &dialog,
        [&dialog](const QString& text) { dialog.setDefaultSuffix(ending_of_filter(text)); });
    begin_in(dialog, folder);
    if (!proposed.isEmpty()) {
        dialog.selectFile(proposed);
    }
    return run_file_dialog(dialog, question, QStringLiteral("&Speichern"), folder);
}

QString proposed_name(const std::string& graphic_file, const QString& ending) {
    const QFileInfo file(path_text(graphic_file));
    const QString base =
        file.completeBaseName().isEmpty() ? file.fileName() : file.completeBaseName();
    return base.isEmpty() ? QString() : base + QLatin1Char('.') + ending;
}

QString path_text(const std::string& path) {
    return QFile::decodeName(path.c_str());
}

std::string system_path(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

}  // namespace veldra
