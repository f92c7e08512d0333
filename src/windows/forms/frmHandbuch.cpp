#include "windows/forms/frmHandbuch.h"

#include <QAbstractButton>
#include <QFile>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTimer>
#include <QVBoxLayout>
#include <QtMath>
#include <algorithm>

/// Makes the pages known: they stand in a static library, whose start-up code would be left out.
/// The macro works in the global namespace only.
static void load_pages() {
    Q_INIT_RESOURCE(handbuch);
}

namespace veldra {

namespace {

constexpr int source_role = Qt::UserRole;
constexpr int text_role = Qt::UserRole + 1;
constexpr int widest_picture = 760;  // logical pixels

QUrl page_url(const QString& page) {
    return QUrl(QStringLiteral("qrc:/handbuch/%1.md").arg(page));
}

QString resource_text(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The text of a page's first heading.
QString heading(const QString& markdown) {
    return markdown.section(QLatin1Char('\n'), 0, 0).remove(0, 2).trimmed();
}

/// Shows pages with the pictures for its screen, none of them wider than the page.
class PageBrowser final : public QTextBrowser {
 public:
    explicit PageBrowser(QWidget* parent) : QTextBrowser(parent) {
        constexpr int milliseconds = 60;
        narrowed_.setSingleShot(true);
        narrowed_.setInterval(milliseconds);
        connect(&narrowed_, &QTimer::timeout, this, &PageBrowser::fit_pictures);
    }

    QVariant loadResource(int type, const QUrl& name) override {
        if (type == QTextDocument::ImageResource) {
            const QString path = QLatin1Char(':') + source().resolved(name).path();
            const QImage picture = handbook_picture(path, devicePixelRatioF(), room());
            if (!picture.isNull()) {
                return picture;
            }
        }
        return QTextBrowser::loadResource(type, name);
    }

 protected:
    void resizeEvent(QResizeEvent* event) override {
        QTextBrowser::resizeEvent(event);
        if (room() == fitted_) {
            return;
        }
        if (isVisible()) {
            narrowed_.start();
        } else {
            fit_pictures();
        }
    }

 private:
    /// Logical pixels that a picture may be wide, the scroll bar counted in, whether it is there
    /// or not.
    [[nodiscard]] int room() const {
        constexpr int narrowest = 100;
        const int beside = 2 * qCeil(document()->documentMargin()) + 2 * frameWidth() +
                           verticalScrollBar()->sizeHint().width();
        return std::clamp(width() - beside, narrowest, widest_picture);
    }

    /// Loads the page anew for the room there is, at the same part of it.
    void fit_pictures() {
        fitted_ = room();
        QScrollBar& bar = *verticalScrollBar();
        const double share = bar.maximum() > 0 ? bar.value() / double(bar.maximum()) : 0;
        reload();
        bar.setValue(qRound(share * bar.maximum()));
    }

    QTimer narrowed_;  ///< reloads once the width has come to rest
    int fitted_ = 0;   ///< the room that the pictures of the page were made for
};

/// The picture, made smaller if it is wider than `room` logical pixels: in device pixels of a
/// screen that has `ratio` of them in a logical one.
QImage within(const QImage& picture, int room, double ratio) {
    if (picture.isNull() || picture.deviceIndependentSize().width() <= room) {
        return picture;
    }
    const double device_pixels = std::max(1.0, ratio);
    // The toolkit scales neither a table of colours nor another ratio than 1 soundly.
    QImage narrow = picture.convertToFormat(QImage::Format_RGB32);
    narrow.setDevicePixelRatio(1);
    narrow = narrow.scaledToWidth(qRound(room * device_pixels), Qt::SmoothTransformation);
    narrow.setDevicePixelRatio(device_pixels);
    return narrow;
}

}  // namespace

QImage handbook_picture(const QString& path, double ratio, int room) {
    static const QString usual = QStringLiteral("/bilder/");
    static const QString enlarged = QStringLiteral("/bilder/150/");
    constexpr double enlargement = 1.5;
    constexpr double fine_screen = 1.25;
    QImage picture;
    if (path.contains(enlarged)) {
        picture.load(path);
        picture.setDevicePixelRatio(std::max(1.0, ratio));
    } else if (ratio >= fine_screen && picture.load(QString(path).replace(usual, enlarged))) {
        picture.setDevicePixelRatio(enlargement);
    } else {
        picture.load(path);
    }
    return within(picture, room, ratio);
}

FrmHandbuch::FrmHandbuch(QWidget* window) : QDialog(window) {
    load_pages();
    setObjectName(QStringLiteral("frmHandbuch"));
    setWindowTitle(QStringLiteral("VELDRA Handbuch"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    build();
    const QString pages = resource_text(QStringLiteral(":/handbuch/seiten.txt"));
    for (const QString& page : pages.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QString text = resource_text(QStringLiteral(":/handbuch/%1.md").arg(page));
        auto* entry = new QListWidgetItem(heading(text), lst_seiten_);
        entry->setData(source_role, page_url(page));
        entry->setData(text_role, text);
    }
    connect(lst_seiten_, &QListWidget::currentRowChanged, this, &FrmHandbuch::follow_list);
    connect(txt_seite_, &QTextBrowser::sourceChanged, this, &FrmHandbuch::follow_page);
    connect(txt_suche_, &QLineEdit::textChanged, this, &FrmHandbuch::search);
    connect(txt_suche_, &QLineEdit::returnPressed, this, &FrmHandbuch::find_next);
    lst_seiten_->setCurrentRow(0);
    const QSize room = screen()->availableSize() - QSize(40, 80);
    resize(sizeHint().boundedTo(room));
    // On a small screen half of the room is for the page.
    const int list = std::min(list_width(), width() / 2);
    spl_handbuch_->setSizes({list, width() - list});
}

/// Room for the longest heading.
int FrmHandbuch::list_width() const {
    return lst_seiten_->sizeHintForColumn(0) + 2 * lst_seiten_->frameWidth() +
           lst_seiten_->verticalScrollBar()->sizeHint().width();
}

/// Room for the widest picture.
int FrmHandbuch::page_width() const {
    return widest_picture + 2 * qCeil(txt_seite_->document()->documentMargin()) +
           2 * txt_seite_->frameWidth() + txt_seite_->verticalScrollBar()->sizeHint().width();
}

QSize FrmHandbuch::sizeHint() const {
    const QMargins margins = layout()->contentsMargins();
    return {list_width() + spl_handbuch_->handleWidth() + page_width() + margins.left() +
                margins.right(),
            fontMetrics().averageCharWidth() * 100};
}

void FrmHandbuch::build() {
    txt_suche_ = new QLineEdit(this);
    txt_suche_->setObjectName(QStringLiteral("txt_suche"));
    txt_suche_->setPlaceholderText(QStringLiteral("Suchen"));
    txt_suche_->setAccessibleName(QStringLiteral("Handbuch durchsuchen"));
    txt_suche_->setClearButtonEnabled(true);
    for (auto* clear : txt_suche_->findChildren<QAbstractButton*>()) {
        clear->setObjectName(QStringLiteral("cmd_suche_leeren"));
        clear->setAccessibleName(QStringLiteral("Suche leeren"));
    }
    lst_seiten_ = new QListWidget(this);
    lst_seiten_->setObjectName(QStringLiteral("lst_seiten"));
    lst_seiten_->setAccessibleName(QStringLiteral("Seiten des Handbuchs"));
    txt_seite_ = new PageBrowser(this);
    txt_seite_->setObjectName(QStringLiteral("txt_seite"));
    txt_seite_->setAccessibleName(QStringLiteral("Seite des Handbuchs"));
    txt_seite_->setOpenExternalLinks(false);
    txt_seite_->document()->setDocumentMargin(fontMetrics().averageCharWidth() * 3);
    auto* cmd_zurueck = new QPushButton(QStringLiteral("&Zurück"), this);
    cmd_zurueck->setObjectName(QStringLiteral("cmd_zurueck"));
    cmd_zurueck->setAccessibleName(QStringLiteral("Zurück"));
    cmd_zurueck->setEnabled(false);
    cmd_zurueck->setAutoDefault(false);
    auto* cmd_schliessen = new QPushButton(QStringLiteral("&Schließen"), this);
    cmd_schliessen->setObjectName(QStringLiteral("cmd_schliessen"));
    cmd_schliessen->setAccessibleName(QStringLiteral("Schließen"));
    cmd_schliessen->setAutoDefault(false);
    connect(cmd_zurueck, &QPushButton::clicked, txt_seite_, &QTextBrowser::backward);
    connect(txt_seite_, &QTextBrowser::backwardAvailable, cmd_zurueck, &QWidget::setEnabled);
    connect(cmd_schliessen, &QPushButton::clicked, this, &QDialog::close);
    auto* find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, txt_suche_, [this] { txt_suche_->setFocus(); });

    auto* contents = new QWidget(this);
    auto* column = new QVBoxLayout(contents);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(txt_suche_);
    column->addWidget(lst_seiten_);
    spl_handbuch_ = new QSplitter(this);
    spl_handbuch_->setObjectName(QStringLiteral("spl_handbuch"));
    spl_handbuch_->addWidget(contents);
    spl_handbuch_->addWidget(txt_seite_);
    spl_handbuch_->setStretchFactor(0, 0);
    spl_handbuch_->setStretchFactor(1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmd_zurueck);
    buttons->addStretch();
    buttons->addWidget(cmd_schliessen);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(spl_handbuch_);
    rows->addLayout(buttons);
}

void FrmHandbuch::show_page(const QString& page) {
    const QUrl url = page_url(page);
    for (int row = 0; row < lst_seiten_->count(); ++row) {
        if (lst_seiten_->item(row)->data(source_role).toUrl() == url) {
            lst_seiten_->setCurrentRow(row);
            return;
        }
    }
    lst_seiten_->setCurrentRow(0);
}

void FrmHandbuch::search() {
    const QString wanted = txt_suche_->text().trimmed();
    int first = -1;
    for (int row = 0; row < lst_seiten_->count(); ++row) {
        QListWidgetItem* entry = lst_seiten_->item(row);
        const bool found = entry->data(text_role).toString().contains(wanted, Qt::CaseInsensitive);
        entry->setHidden(!found);
        first = found && first < 0 ? row : first;
    }
    if (wanted.isEmpty() || first < 0) {
        return;
    }
    const QListWidgetItem* shown = lst_seiten_->currentItem();
    if (shown == nullptr || shown->isHidden()) {
        lst_seiten_->setCurrentRow(first);
    }
    txt_seite_->moveCursor(QTextCursor::Start);
    txt_seite_->find(wanted);
}

void FrmHandbuch::find_next() {
    const QString wanted = txt_suche_->text().trimmed();
    if (wanted.isEmpty() || txt_seite_->find(wanted)) {
        return;
    }
    const int pages = lst_seiten_->count();
    for (int step = 1; step <= pages; ++step) {
        const int row = (lst_seiten_->currentRow() + step) % pages;
        if (!lst_seiten_->item(row)->isHidden()) {
            lst_seiten_->setCurrentRow(row);
            txt_seite_->moveCursor(QTextCursor::Start);
            txt_seite_->find(wanted);
            return;
        }
    }
}

void FrmHandbuch::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QDialog::keyPressEvent(event);
    } else if (auto* button = qobject_cast<QAbstractButton*>(focusWidget())) {
        button->click();
    }
}

void FrmHandbuch::follow_list() {
    const QListWidgetItem* entry = lst_seiten_->currentItem();
    if (entry == nullptr) {
        return;
    }
    const QUrl source = entry->data(source_role).toUrl();
    if (txt_seite_->source().adjusted(QUrl::RemoveFragment) != source) {
        txt_seite_->setSource(source, QTextDocument::MarkdownResource);
    }
}

void FrmHandbuch::follow_page(const QUrl& source) {
    const QUrl page = source.adjusted(QUrl::RemoveFragment);
    for (int row = 0; row < lst_seiten_->count(); ++row) {
        if (lst_seiten_->item(row)->data(source_role).toUrl() == page) {
            lst_seiten_->setCurrentRow(row);
            return;
        }
    }
}

}  // namespace veldra
