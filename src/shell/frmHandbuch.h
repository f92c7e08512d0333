#pragma once

#include <QDialog>

class QLineEdit;
class QListWidget;
class QTextBrowser;

namespace veldra {

/// The handbook: its pages beside their list, with a search over all of them. The pages are part
/// of the program, so that it needs no network and no installed files.
class FrmHandbuch final : public QDialog {
    Q_OBJECT

 public:
    explicit FrmHandbuch(QWidget* window);

    /// Opens a page by its file name without ending ("index", "plotten"); an unknown one opens the
    /// first page.
    void show_page(const QString& page);

 private:
    void build();
    /// Shows in the list only the pages that contain the text of the search field.
    void search();
    void follow_list();
    void follow_page(const QUrl& source);

    QLineEdit* txt_suche_ = nullptr;
    QListWidget* lst_seiten_ = nullptr;
    QTextBrowser* txt_seite_ = nullptr;
};

}  // namespace veldra
