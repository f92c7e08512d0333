#pragma once

#include <QDialog>
#include <QImage>

class QLineEdit;
class QListWidget;
class QSplitter;
class QTextBrowser;

namespace veldra {

/// A picture of the handbook for a screen of `ratio` device pixels a logical one. Each picture is
/// there twice, drawn at 100 and at 150 percent (in a folder "150"), with the same logical size;
/// the one that suits the screen is taken. A picture that a page takes from that folder is shown
/// pixel by pixel. One wider than `room` logical pixels is made smaller, to just that width. `path`
/// is that of a resource; null if there is none.
[[nodiscard]] QImage handbook_picture(const QString& path, double ratio, int room);

/// The handbook: its pages beside their list, with a search over all of them. The pages are part
/// of the program, so that it needs no network and no installed files.
class FrmHandbuch final : public QDialog {
    Q_OBJECT

 public:
    explicit FrmHandbuch(QWidget* window);

    /// Opens a page by its file name without ending ("index", "plotten"); an unknown one opens the
    /// first page.
    void show_page(const QString& page);

    /// With room for the longest heading and the widest picture.
    [[nodiscard]] QSize sizeHint() const override;

 protected:
    /// Return presses the button that has the focus and no other.
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void build();
    [[nodiscard]] int list_width() const;
    [[nodiscard]] int page_width() const;
    /// Shows in the list only the pages that contain the text of the search field.
    void search();
    /// Goes to the next place of that text, on this page or the next one that has it.
    void find_next();
    void follow_list();
    void follow_page(const QUrl& source);

    QSplitter* spl_handbuch_ = nullptr;
    QLineEdit* txt_suche_ = nullptr;
    QListWidget* lst_seiten_ = nullptr;
    QTextBrowser* txt_seite_ = nullptr;
};

}  // namespace veldra
