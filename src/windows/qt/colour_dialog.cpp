#include "windows/qt/colour_dialog.h"

#include <QColorDialog>
#include <QKeyEvent>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

#include "windows/qt/dialog_area.h"
#include "windows/qt/dialog_controls.h"
#include "windows/qt/dialog_place.h"
#include "windows/qt/sample_picture.h"

namespace veldra {

namespace {

/// The toolkit's dialog as a part of another one: the keys that end a dialog are for that one.
class EmbeddedColours final : public QColorDialog {
 public:
    explicit EmbeddedColours(QWidget* parent) : QColorDialog(parent) {
        setWindowFlags(Qt::Widget);
        setOptions(QColorDialog::NoButtons | QColorDialog::DontUseNativeDialog);
        setSizeGripEnabled(false);
        setObjectName(QStringLiteral("fra_farben"));
    }

 protected:
    void keyPressEvent(QKeyEvent* event) override { event->ignore(); }
};

}  // namespace

ColourDialog::ColourDialog(QWidget* parent, const QString& name, std::int32_t colour)
    : QDialog(parent), colours_(new EmbeddedColours(this)) {
    setObjectName(name);
    setWindowTitle(QStringLiteral("Farbe"));
    setModal(true);
    auto* column = new QVBoxLayout(this);
    column->addWidget(new DialogArea(colours_, this), 1);
    const EndButtons buttons = add_end_buttons(*column, this);
    connect(buttons.cmd_ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(buttons.cmd_abbrechen, &QPushButton::clicked, this, &QDialog::reject);
    set_colour(colour);
}

std::int32_t ColourDialog::colour() const {
    return from_qcolor(colours_->currentColor());
}

void ColourDialog::set_colour(std::int32_t colour) {
    colours_->setCurrentColor(to_qcolor(colour));
}

void ColourDialog::showEvent(QShowEvent* event) {
    colours_->show();
    QDialog::showEvent(event);
    if (parentWidget() != nullptr) {
        centre_on(*this, *parentWidget()->window());
    }
}

}  // namespace veldra
