#pragma once
// The library window: the pages of the object library as a tree, the
// objects of the chosen page as thumbnails with their names, and a search
// over all pages. A click hangs a new object on the pointer, a drag carries
// it onto the plan; the user's own objects can be renamed, removed,
// exported and imported as single-object files.
//
// Thumbnails are drawn by the program from the objects themselves. They are
// drawn when a view first asks for them, so only the visible ones cost
// anything at start, and kept until the library changes.

#include <QHash>
#include <QPixmap>
#include <QString>
#include <QWidget>

#include <vector>

class CVxLibraryItemModel;
class CVxLibraryItemView;
class CVxLibraryPage;
class CVxPart;
class QLineEdit;
class QListView;
class QMimeData;
class QTreeWidget;
class QTreeWidgetItem;

class CVxLibraryForm : public QWidget
{
    Q_OBJECT
public:
    // What a drag from the view carries: the library index as text.
    static constexpr const char* mimeType = "application/x-plaveno-library-object";
    // The library index a drag carries, -1 when it carries none.
    static int LibIndexFromMimeData(const QMimeData* data);
    static QMimeData* CreateMimeData(int libIndex);

    explicit CVxLibraryForm(QWidget* parent = nullptr);
    ~CVxLibraryForm() override;

    // The pages and objects again, after the library or the language
    // changed; `all` also forgets the thumbnails.
    void Rebuild(bool all);
    // The page of that index in the library's page list.
    void SelectPage(int pageIndex);
    int GetCurrentPage() const { return m_currentPage; }
    // Focus on the search field, with its text selected.
    void FocusSearch();

    QTreeWidget* GetPageTree() const { return m_pageTree; }
    QListView* GetItemView() const;
    QLineEdit* GetSearchField() const { return m_search; }
    // The objects shown now, by library index.
    const std::vector<int>& GetShownObjects() const;
    // The thumbnail of a library object at the view's pixel ratio, drawn on
    // first use.
    QPixmap GetThumbnail(int libIndex);
    int GetDrawnThumbnailCount() const { return m_thumbnailsDrawn; }
    // The view's size of a thumbnail, in device-independent pixels.
    int GetThumbnailSide() const { return m_thumbSide; }

    // A new object on the pointer, as a click on its thumbnail makes it.
    bool StartPlacing(int libIndex);

    QSize sizeHint() const override;

signals:
    // A thumbnail was clicked and its object hangs on the pointer.
    void objectPicked(int libIndex);

protected:
    void changeEvent(QEvent* event) override;

private:
    void FillPageTree();
    void Refill();
    // Whether page `page` lists object `libIndex`.
    bool PageHolds(const CVxLibraryPage& page, int libIndex, const CVxPart& part) const;
    // The caption under a thumbnail: name, and the size the object takes
    // in the project.
    void CaptionOf(const CVxPart& part, bool addDimensions, QString& name, QString& size) const;
    bool CurrentPageIsUserPage(int* userPageId) const;
    void OnPageChanged(QTreeWidgetItem* item);
    void OnContextMenu(const QPoint& pos);
    void RenameObject(int libIndex);
    void ExportObject(int libIndex);
    void ImportObject();
    void UpdateGridSize();
    bool eventFilter(QObject* watched, QEvent* event) override;

    QLineEdit* m_search = nullptr;
    QTreeWidget* m_pageTree = nullptr;
    CVxLibraryItemView* m_view = nullptr;
    CVxLibraryItemModel* m_model = nullptr;
    int m_currentPage = -1;
    QHash<int, QPixmap> m_thumbnails;
    int m_thumbnailsDrawn = 0;
    int m_thumbSide = 72;
    // The form is filling its own lists and fields; their signals are its own.
    bool m_filling = false;
};
