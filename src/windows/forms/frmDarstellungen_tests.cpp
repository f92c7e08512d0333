#include "windows/forms/frmDarstellungen_tests.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

#include "drawing/display_samples.h"
#include "windows/qt/entry_box.h"
#include "windows/qt/sample_picture.h"

namespace veldra {

namespace {

struct LimitBox {
    const char* name;
    const char* accessible_name;
};

/// In the order of TestLimit.
constexpr LimitBox limit_boxes[] = {
    {"txt_grenzwert", "Grenzwert für EV"}, {"txt_ev_wert", "Grenzwert EV"},
    {"txt_nv_wert_1", "Grenzwert NV 1"},   {"txt_nv_wert_2", "Grenzwert NV 2"},
    {"txt_nv_wert_3", "Grenzwert NV 3"},   {"txt_ep_wert_1", "Grenzwert EP 1"},
    {"txt_ep_wert_2", "Grenzwert EP 2"}};

QString qtext(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

DisplayTestsPage::DisplayTestsPage(DisplayContext& page_context, QWidget* parent)
    : DisplayPage(page_context, DisplayTab::tests, parent) {
    auto* grid = new QGridLayout(this);
    grid->addWidget(build_frame(0, "Grenzwert für EV zur Darstellung von NV, EP, EH:", 0, 0), 0, 0);
    grid->addWidget(build_frame(1, "EV:", 1, 2), 1, 0);
    grid->addWidget(build_frame(2, "NV:", 3, 6), 0, 1, 2, 1);
    grid->addWidget(build_frame(3, "EP / EH:", 7, 9), 2, 0);
    QLabel* hint = add_label(QStringLiteral("lbl_hinweis_test"),
                             QStringLiteral("weitere Auswahl duch Pfeiltasten"));
    grid->addWidget(hint, 2, 1, Qt::AlignLeft | Qt::AlignTop);
    grid->addWidget(build_buttons(), 3, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(0, 2);
    grid->setRowStretch(1, 3);
    grid->setRowStretch(2, 4);
}

QGroupBox* DisplayTestsPage::build_frame(int number, const char* title, std::size_t first,
                                         std::size_t last) {
    auto* group = new QGroupBox(QString::fromUtf8(title), this);
    group->setObjectName(QStringLiteral("fra_testwert_%1").arg(number));
    auto* grid = new QGridLayout(group);
    for (std::size_t index = first; index <= last; ++index) {
        const int row = static_cast<int>(index - first);
        pictures_[index] = add_sample(index, group);
        grid->addWidget(pictures_[index], row, 0);
        labels_[index] = add_label(QStringLiteral("lbl_testwert_%1").arg(index), QString());
        labels_[index]->installEventFilter(this);
        give_room(*labels_[index], QStringLiteral("EV > 99999.9"));
        grid->addWidget(labels_[index], row, 1);
        const auto limit = test_class_limit(index);
        if (limit) {
            QLineEdit* edit = add_limit(*limit);
            labels_[index]->setBuddy(edit);
            grid->addWidget(edit, row, 2);
        }
    }
    grid->setColumnStretch(0, 1);
    return group;
}

SamplePicture* DisplayTestsPage::add_sample(std::size_t index, QWidget* parent) {
    auto* picture = new SamplePicture(QStringLiteral("pic_testwert_%1").arg(index),
                                      QStringLiteral("Muster"), parent);
    picture->set_room(18, 2);
    picture->set_choosable(true);
    const TestClass test = test_class(index);
    picture->set_draw([this, test](DrawingTarget& target, const SampleSize& size) {
        draw_test_sample(session(), context().measurer, target, size, test.statistic, test.number);
    });
    connect(picture, &SamplePicture::chosen, this,
            [this, index] { choose(static_cast<int>(index)); });
    connect(picture, &SamplePicture::stepped, this,
            [this, index](int by) { choose(static_cast<int>(index) + by); });
    return picture;
}

QLineEdit* DisplayTestsPage::add_limit(TestLimit limit) {
    const LimitBox& names = limit_boxes[static_cast<std::size_t>(limit)];
    QLineEdit* edit =
        add_line_edit(QString::fromUtf8(names.name), QString::fromUtf8(names.accessible_name));
    edit->setAlignment(Qt::AlignRight);
    limits_[static_cast<std::size_t>(limit)] = edit;
    new EntryBox(
        *edit, *edit, [this, limit] { check(limit); }, context().leaves_unread);
    return edit;
}

QWidget* DisplayTestsPage::build_buttons() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    QPushButton* colour = add_button(QStringLiteral("cmd_test_farbe"), QStringLiteral("&Farbe"),
                                     QStringLiteral("Farbe der Testklasse"));
    QPushButton* width = add_button(QStringLiteral("cmd_test_strich"), QStringLiteral("S&trich"),
                                    QStringLiteral("Strichstärke der Testklasse"));
    connect(colour, &QPushButton::clicked, this, [this] {
        ask_for_colour(QStringLiteral("dlg_farbe_test"), test_pen_places(settings(), chosen_));
    });
    connect(width, &QPushButton::clicked, this, [this] {
        ask_for_width(qtext(test_width_caption(chosen_)), test_pen_places(settings(), chosen_),
                      false);
    });
    lbl_fuer_ = add_label(QStringLiteral("lbl_Für_test"), QString());
    row->addWidget(colour);
    row->addWidget(width);
    row->addWidget(lbl_fuer_);
    row->addStretch();
    row->addWidget(add_standard_button(QStringLiteral("cmd_standard_test")));
    return widget;
}

void DisplayTestsPage::choose(int index) {
    if (index < 0 || index >= static_cast<int>(test_class_count)) {
        return;
    }
    chosen_ = static_cast<std::size_t>(index);
    pictures_[chosen_]->setFocus();
    refresh();
}

bool DisplayTestsPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        const auto found = std::find(labels_.begin(), labels_.end(), watched);
        if (found != labels_.end()) {
            choose(static_cast<int>(found - labels_.begin()));
            return true;
        }
    }
    return DisplayPage::eventFilter(watched, event);
}

void DisplayTestsPage::check(TestLimit limit) {
    QLineEdit& edit = box(limit);
    const LimitEntry entry =
        check_limit(edit.text().toStdString(), test_limit_bounds(settings(), limit));
    edit.setText(qtext(entry.typed));
    if (entry.message) {
        const QPalette usual = edit.palette();
        QPalette wrong = usual;
        wrong.setColor(QPalette::Base, QColor(255, 0, 0));
        edit.setPalette(wrong);
        context().say(*entry.message);
        test_limit(settings(), limit) = entry.value;
        edit.setText(qtext(entry.text));
        edit.setPalette(usual);
    } else {
        test_limit(settings(), limit) = entry.value;
    }
    refresh();
}

void DisplayTestsPage::show_limit(TestLimit limit) {
    const double value = test_limit(std::as_const(settings()), limit);
    box(limit).setText(QString::fromStdString(number_text(value, "####0.0")));
}

void DisplayTestsPage::take_over() {
    for (std::size_t i = 0; i < test_limit_count; ++i) {
        const auto limit = static_cast<TestLimit>(i);
        const double value = test_limit(std::as_const(settings()), limit);
        if (box(limit).text().toStdString() != number_text(value, "####0.0")) {
            check(limit);
        }
    }
}

void DisplayTestsPage::refresh() {
    for (std::size_t i = 0; i < test_limit_count; ++i) {
        show_limit(static_cast<TestLimit>(i));
    }
    for (std::size_t i = 0; i < test_class_count; ++i) {
        const QString text = qtext(test_class_text(settings(), i));
        // The limit stands in the box beside the class, if it has one.
        labels_[i]->setText(i == 0                ? QStringLiteral("EV < ")
                            : test_class_limit(i) ? qtext(test_class_relation(i))
                                                  : text);
        pictures_[i]->setAccessibleName(QStringLiteral("Muster ") + text);
        pictures_[i]->set_chosen(i == chosen_);
    }
    lbl_fuer_->setText(qtext(test_class_caption(settings(), chosen_)));
}

}  // namespace veldra
