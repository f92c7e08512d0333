#pragma once

#include <QDialog>
#include <QString>

#include "model/session.h"

class QGroupBox;
class QLabel;
class QVBoxLayout;

namespace veldra {

class SamplePicture;
class DialogArea;
class MarkLabel;

/// Shows beside the picture what lengths in it mean: the ground, and the values at their scales.
/// Its object name is "frmMaßstab".
class FrmMassstab final : public QDialog {
    Q_OBJECT

 public:
    /// `session` outlives the dialog.
    FrmMassstab(QWidget* window, const Session& session);

    /// Brings everything into line with the session; the lower edge of the window stays.
    void refresh();

 protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    /// A frame with a picture and the labels around it.
    struct Frame {
        QGroupBox* group = nullptr;
        MarkLabel* mark = nullptr;
        SamplePicture* picture = nullptr;
        QLabel* max_ap = nullptr;
        QLabel* bei_ap = nullptr;
        QLabel* max_np = nullptr;
        QLabel* bei_np = nullptr;
    };

    /// `name` ends the names of the labels.
    Frame add_frame(const QString& group, const QString& picture, const QString& name,
                    const QString& caption);
    void add_maximum(Frame& frame, const QString& which, const QString& name);
    void show_ground();
    void show_values(const Frame& frame, std::size_t slot, const QString& caption);
    void show_bars();
    void fit_height();

    const Session& session_;
    DialogArea* area_;
    QVBoxLayout* column_;
    Frame grundriss_;
    Frame lage_;
    Frame lfehl_;
    Frame hoehe_;
};

}  // namespace veldra
