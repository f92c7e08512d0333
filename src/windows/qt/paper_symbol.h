#pragma once

#include <QString>
#include <QWidget>

namespace veldra {

/// A small picture of a sheet of paper, upright or lying. Its size follows the font; it says
/// nothing that the control beside it does not.
class PaperSymbol final : public QWidget {
    Q_OBJECT

 public:
    enum class Lies { upright, across };

    /// `chosen`: drawn as the one that holds, else faintly.
    PaperSymbol(const QString& name, Lies lies, bool chosen, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    Lies lies_;
    bool chosen_;
};

}  // namespace veldra
