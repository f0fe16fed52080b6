#include "CVxLibraryForm.h"

#include "CVxAppCore.h"
#include "CVxLibraryPage.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxQtDC.h"
#include "CVxUserLibrary.h"
#include "IVxAppHelperCallback.h"

#include <QAbstractListModel>
#include <QDrag>
#include <QEvent>
#include <QFileDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

CVxStringW Msg(int row, const wchar_t* english)
{
    return VX_GetLoc()->LocalizeMessage(row, english);
}

QString QMsg(int row, const wchar_t* english)
{
    return Msg(row, english).ToQString();
}

// The thumbnail's cell: room for the picture on its card, two lines of
// name and one of size; never narrower than this.
constexpr int minCellWidth = 92;
constexpr int cardPadding = 3;
constexpr int cellMargin = 3;

enum EVxItemRole
{
    roleLibIndex = Qt::UserRole,
    roleSize,
};

// A name in at most two lines of `width`; what does not fit ends in an
// ellipsis.
QStringList WrapName(const QFontMetrics& metrics, const QString& name, int width)
{
    const QStringList words = name.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QString first;
    int used = 0;
    for (; used < words.size(); ++used) {
        const QString trial = first.isEmpty() ? words[used] : first + QLatin1Char(' ') + words[used];
        if (metrics.horizontalAdvance(trial) > width && !first.isEmpty())
            break;
        first = trial;
    }
    if (metrics.horizontalAdvance(first) > width)
        return {metrics.elidedText(first + QLatin1Char(' ') + words.mid(used).join(QLatin1Char(' ')),
                                   Qt::ElideRight, width)};
    if (used >= words.size())
        return {first};
    return {first, metrics.elidedText(words.mid(used).join(QLatin1Char(' ')), Qt::ElideRight, width)};
}

} // namespace

// The objects shown, by library index, with their captions.
class CVxLibraryItemModel : public QAbstractListModel
{
public:
    struct SVxItem
    {
        int libIndex;
        QString name;
        QString size;
    };

    explicit CVxLibraryItemModel(CVxLibraryForm* form) : QAbstractListModel(form), m_form(form) {}

    void SetItems(std::vector<SVxItem> items)
    {
        beginResetModel();
        m_items = std::move(items);
        m_indexes.clear();
        m_indexes.reserve(m_items.size());
        for (const SVxItem& item : m_items)
            m_indexes.push_back(item.libIndex);
        endResetModel();
    }
    const std::vector<int>& GetLibIndexes() const { return m_indexes; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_items.size());
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid() || index.row() >= rowCount())
            return QVariant();
        const SVxItem& item = m_items[static_cast<size_t>(index.row())];
        switch (role) {
        case Qt::DisplayRole:
            return item.name;
        case Qt::ToolTipRole:
            return item.size.isEmpty() ? item.name : item.name + QLatin1Char('\n') + item.size;
        case Qt::DecorationRole:
            // Only the cells being painted ask: the view draws what shows.
            return m_form->GetThumbnail(item.libIndex);
        case roleLibIndex:
            return item.libIndex;
        case roleSize:
            return item.size;
        default:
            return QVariant();
        }
    }

    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        if (!index.isValid())
            return Qt::NoItemFlags;
        return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
    }

    QStringList mimeTypes() const override { return {QString::fromLatin1(CVxLibraryForm::mimeType)}; }

    QMimeData* mimeData(const QModelIndexList& indexes) const override
    {
        if (indexes.isEmpty())
            return nullptr;
        return CVxLibraryForm::CreateMimeData(indexes.first().data(roleLibIndex).toInt());
    }

private:
    CVxLibraryForm* m_form;
    std::vector<SVxItem> m_items;
    std::vector<int> m_indexes;
};

// A thumbnail on a white card, as the plan's paper, with the name under it
// and the size in a smaller, quieter line.
class CVxLibraryItemDelegate : public QStyledItemDelegate
{
public:
    CVxLibraryItemDelegate(CVxLibraryForm* form, QObject* parent) : QStyledItemDelegate(parent), m_form(form)
    {
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing, true);
        const QRect cell = option.rect.adjusted(cellMargin, cellMargin, -cellMargin, -cellMargin);
        const QPalette& palette = option.palette;
        const bool selected = option.state & QStyle::State_Selected;
        const bool hover = option.state & QStyle::State_MouseOver;
        if (selected || hover) {
            QColor tint = palette.color(QPalette::Highlight);
            tint.setAlpha(selected ? 70 : 30);
            painter->setPen(Qt::NoPen);
            painter->setBrush(tint);
            painter->drawRoundedRect(cell, 6, 6);
        }
        const int side = m_form->GetThumbnailSide();
        const QRect card(cell.center().x() - side / 2 - cardPadding, cell.top() + 4, side + 2 * cardPadding,
                         side + 2 * cardPadding);
        painter->setPen(QPen(QColor(0, 0, 0, selected ? 90 : 45), 1));
        painter->setBrush(Qt::white);
        painter->drawRoundedRect(QRectF(card).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
        const QPixmap thumb = qvariant_cast<QPixmap>(index.data(Qt::DecorationRole));
        if (!thumb.isNull())
            painter->drawPixmap(card.left() + cardPadding, card.top() + cardPadding, thumb);

        const QFontMetrics metrics(option.font);
        int y = card.bottom() + 4;
        // Text may use the whole cell: the neighbours' texts keep their own.
        const int textWidth = option.rect.width() - 2;
        const int textLeft = option.rect.left() + 1;
        painter->setPen(palette.color(selected ? QPalette::Text : QPalette::WindowText));
        painter->setFont(option.font);
        for (const QString& line : WrapName(metrics, index.data(Qt::DisplayRole).toString(), textWidth)) {
            painter->drawText(QRect(textLeft, y, textWidth, metrics.height()), Qt::AlignHCenter, line);
            y += metrics.height();
        }
        QString size = index.data(roleSize).toString();
        if (!size.isEmpty()) {
            QFont small = option.font;
            small.setPointSizeF(small.pointSizeF() * 0.85);
            const QFontMetrics smallMetrics(small);
            // The three numbers matter more than the unit, which the tool
            // tip still tells.
            const int unit = size.lastIndexOf(QLatin1Char(' '));
            if (smallMetrics.horizontalAdvance(size) > textWidth && unit > 0)
                size.truncate(unit);
            painter->setFont(small);
            QColor quiet = palette.color(QPalette::WindowText);
            quiet.setAlpha(150);
            painter->setPen(quiet);
            painter->drawText(QRect(cell.left() + 2, y + 1, textWidth, smallMetrics.height()),
                              Qt::AlignHCenter, smallMetrics.elidedText(size, Qt::ElideRight, textWidth));
        }
        painter->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const override
    {
        const QFontMetrics metrics(option.font);
        return QSize(minCellWidth, m_form->GetThumbnailSide() + 2 * cardPadding + 4 + 4 +
                                       3 * metrics.height() + 2 * cellMargin + 4);
    }

private:
    CVxLibraryForm* m_form;
};

// The grid of thumbnails: a click picks, a drag carries the object's
// thumbnail to the plan, Enter picks the current one.
class CVxLibraryItemView : public QListView
{
public:
    explicit CVxLibraryItemView(CVxLibraryForm* form) : QListView(form), m_form(form) {}

protected:
    void startDrag(Qt::DropActions /*supportedActions*/) override
    {
        const QModelIndex index = currentIndex();
        if (!index.isValid())
            return;
        const int libIndex = index.data(roleLibIndex).toInt();
        // No picture travels with the pointer: over the plan the object
        // itself stands under it, and a picture would hide it.
        auto* drag = new QDrag(this);
        drag->setMimeData(CVxLibraryForm::CreateMimeData(libIndex));
        drag->exec(Qt::CopyAction, Qt::CopyAction);
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentIndex().isValid()) {
            m_form->StartPlacing(currentIndex().data(roleLibIndex).toInt());
            event->accept();
            return;
        }
        QListView::keyPressEvent(event);
    }

    void paintEvent(QPaintEvent* event) override
    {
        QListView::paintEvent(event);
        if (model() && model()->rowCount() > 0)
            return;
        QPainter painter(viewport());
        QColor quiet = palette().color(QPalette::WindowText);
        quiet.setAlpha(150);
        painter.setPen(quiet);
        painter.drawText(viewport()->rect().adjusted(12, 24, -12, -12), Qt::AlignHCenter | Qt::TextWordWrap,
                         QMsg(341, L"No objects found."));
    }

private:
    CVxLibraryForm* m_form;
};

int CVxLibraryForm::LibIndexFromMimeData(const QMimeData* data)
{
    if (!data || !data->hasFormat(QString::fromLatin1(mimeType)))
        return -1;
    bool ok = false;
    const int index = QString::fromLatin1(data->data(QString::fromLatin1(mimeType))).toInt(&ok);
    if (!ok || !VX_GetCore()->GetUserLibrary().SafeGetPart(index))
        return -1;
    return index;
}

QMimeData* CVxLibraryForm::CreateMimeData(int libIndex)
{
    auto* data = new QMimeData;
    data->setData(QString::fromLatin1(mimeType), QByteArray::number(libIndex));
    return data;
}

CVxLibraryForm::CVxLibraryForm(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("LibraryForm"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);

    m_search = new QLineEdit(this);
    m_search->setObjectName(QStringLiteral("LibrarySearch"));
    m_search->setPlaceholderText(QMsg(340, L"Search objects"));
    m_search->setClearButtonEnabled(true);
    layout->addWidget(m_search);

    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->setChildrenCollapsible(false);
    layout->addWidget(splitter, 1);

    m_pageTree = new QTreeWidget(splitter);
    m_pageTree->setObjectName(QStringLiteral("LibraryPages"));
    m_pageTree->setHeaderHidden(true);
    m_pageTree->setIndentation(14);
    m_pageTree->setUniformRowHeights(true);
    m_pageTree->setMinimumHeight(60);

    m_model = new CVxLibraryItemModel(this);
    m_view = new CVxLibraryItemView(this);
    splitter->addWidget(m_view);
    m_view->setObjectName(QStringLiteral("LibraryObjects"));
    m_view->setViewMode(QListView::IconMode);
    m_view->setMovement(QListView::Static);
    m_view->setResizeMode(QListView::Adjust);
    m_view->setWrapping(true);
    m_view->setUniformItemSizes(true);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_view->setDragEnabled(true);
    m_view->setDragDropMode(QAbstractItemView::DragOnly);
    m_view->setMouseTracking(true);
    m_view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_view->setContextMenuPolicy(Qt::CustomContextMenu);
    m_view->setItemDelegate(new CVxLibraryItemDelegate(this, m_view));
    m_view->setModel(m_model);
    m_view->installEventFilter(this);
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);

    connect(m_search, &QLineEdit::textChanged, this, [this] {
        if (!m_filling)
            Refill();
    });
    connect(m_pageTree, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem* item) { OnPageChanged(item); });
    connect(m_view, &QListView::clicked, this,
            [this](const QModelIndex& index) { StartPlacing(index.data(roleLibIndex).toInt()); });
    connect(m_view, &QWidget::customContextMenuRequested, this, &CVxLibraryForm::OnContextMenu);

    FillPageTree();
    // Room for about nine rows of pages; the rest of the height is the
    // objects'.
    const int rowHeight = std::max(m_pageTree->sizeHintForRow(0), fontMetrics().height() + 4);
    splitter->setSizes({rowHeight * 9 + 2 * m_pageTree->frameWidth(), 400});

    // The page of the last session, unless it has nothing to show.
    const int stored = VX_GetOptions()->m_lastLibraryPage;
    SelectPage(stored);
    if (m_model->rowCount() == 0) {
        const auto& pages = VX_GetCore()->GetUserLibrary().GetPages();
        for (int i = 0; i < static_cast<int>(pages.size()); ++i) {
            SelectPage(i);
            if (m_model->rowCount() > 0)
                break;
        }
    }
    UpdateGridSize();
}

CVxLibraryForm::~CVxLibraryForm() = default;

QListView* CVxLibraryForm::GetItemView() const
{
    return m_view;
}

const std::vector<int>& CVxLibraryForm::GetShownObjects() const
{
    return m_model->GetLibIndexes();
}

QSize CVxLibraryForm::sizeHint() const
{
    // Three thumbnails a row and a scroll bar.
    return QSize(3 * minCellWidth + 2 * 4 + 2 * m_view->frameWidth() +
                     style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 4,
                 600);
}

void CVxLibraryForm::FillPageTree()
{
    const auto& pages = VX_GetCore()->GetUserLibrary().GetPages();
    m_filling = true;
    m_pageTree->clear();
    std::vector<QTreeWidgetItem*> items(pages.size(), nullptr);
    // The user's own pages stand under the user library, subpages under
    // their parent; the rest in the library's order.
    const auto findByUnique = [&](const CVxStringW& unique) -> QTreeWidgetItem* {
        for (size_t i = 0; i < pages.size(); ++i)
            if (items[i] && pages[i].uniqueName == unique)
                return items[i];
        return nullptr;
    };
    QTreeWidgetItem* userRoot = nullptr;
    for (int pass = 0; pass < 2; ++pass) {
        for (size_t i = 0; i < pages.size(); ++i) {
            if (items[i])
                continue;
            const CVxLibraryPage& page = pages[i];
            QTreeWidgetItem* parent = nullptr;
            if (!page.parentPage.IsEmpty()) {
                parent = findByUnique(page.parentPage);
                if (!parent && pass == 0)
                    continue;
            } else if (page.isUserPage) {
                parent = userRoot;
            }
            auto* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(m_pageTree);
            item->setText(0, page.localName.ToQString());
            item->setData(0, Qt::UserRole, static_cast<int>(i));
            items[i] = item;
            if (!page.isUserPage && page.id == 0 && page.libraryName.IsEmpty() && !userRoot)
                userRoot = item;
        }
    }
    m_pageTree->expandAll();
    // The page stays as it was, and a search with it.
    if (m_currentPage >= 0 && m_currentPage < static_cast<int>(items.size()) && items[m_currentPage])
        m_pageTree->setCurrentItem(items[static_cast<size_t>(m_currentPage)]);
    m_filling = false;
}

void CVxLibraryForm::SelectPage(int pageIndex)
{
    QTreeWidgetItemIterator it(m_pageTree);
    for (; *it; ++it) {
        if ((*it)->data(0, Qt::UserRole).toInt() == pageIndex) {
            m_pageTree->setCurrentItem(*it);
            return;
        }
    }
}

void CVxLibraryForm::OnPageChanged(QTreeWidgetItem* item)
{
    if (m_filling || !item)
        return;
    m_currentPage = item->data(0, Qt::UserRole).toInt();
    VX_GetOptions()->m_lastLibraryPage = m_currentPage;
    // Choosing a page ends a search.
    if (!m_search->text().isEmpty()) {
        // Not by blocking signals: the field's clear button follows them.
        m_filling = true;
        m_search->clear();
        m_filling = false;
    }
    Refill();
}

void CVxLibraryForm::FocusSearch()
{
    m_search->setFocus(Qt::OtherFocusReason);
    m_search->selectAll();
}

bool CVxLibraryForm::PageHolds(const CVxLibraryPage& page, int libIndex, const CVxPart& part) const
{
    const CVxUserLibrary& library = VX_GetCore()->GetUserLibrary();
    const bool userObject = library.IsUserObject(libIndex);
    if (page.isUserPage)
        return userObject && part.userLibID == page.id;
    if (page.id == 0 && page.libraryName.IsEmpty())
        return userObject && part.userLibID == 0;
    if (userObject || page.id < 0 || page.id > 31)
        return false;
    const unsigned additional = 1u << CVxLibraryPage::additionalPageId;
    if (page.id == CVxLibraryPage::additionalPageId) {
        // The pages of additional files share one bit; the object's list of
        // page names tells which of them it is on.
        if (!(part.libraryMask & additional))
            return false;
        CVxStringW names = L"|" + part.library + L"|";
        return names.Find(L"|" + page.uniqueName + L"|") >= 0;
    }
    return (part.libraryMask & additional) == 0 && (part.libraryMask & (1u << page.id)) != 0;
}

void CVxLibraryForm::CaptionOf(const CVxPart& part, bool addDimensions, QString& name, QString& size) const
{
    const QString caption = VX_GetCore()->LibGetPartViewCaption(&part, addDimensions, true).ToQString();
    const int split = caption.indexOf(QLatin1Char('\n'));
    name = split < 0 ? caption : caption.left(split);
    size = split < 0 ? QString() : caption.mid(split + 1);
    // Three sizes must fit under a thumbnail.
    size.replace(QStringLiteral(" x "), QStringLiteral("\u00D7"));
}

void CVxLibraryForm::Refill()
{
    CVxAppCore* core = VX_GetCore();
    const CVxUserLibrary& library = core->GetUserLibrary();
    const auto& pages = library.GetPages();
    const QStringList words = m_search->text().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const CVxLibraryPage* page = m_currentPage >= 0 && m_currentPage < static_cast<int>(pages.size())
                                     ? &pages[static_cast<size_t>(m_currentPage)]
                                     : nullptr;
    std::vector<CVxLibraryItemModel::SVxItem> items;
    for (int i = 0; i < library.GetSlotCount(); ++i) {
        const CVxPart* part = library.SafeGetPart(i);
        if (!part || !part->inUse)
            continue;
        CVxLibraryItemModel::SVxItem item{i, QString(), QString()};
        if (words.isEmpty()) {
            if (!page || !PageHolds(*page, i, *part))
                continue;
            CaptionOf(*part, page->addDimensions, item.name, item.size);
        } else {
            // A search looks through every page, by the names the user reads.
            const bool listed = std::any_of(pages.begin(), pages.end(), [&](const CVxLibraryPage& candidate) {
                return PageHolds(candidate, i, *part);
            });
            if (!listed)
                continue;
            CaptionOf(*part, true, item.name, item.size);
            const bool match = std::all_of(words.begin(), words.end(), [&](const QString& word) {
                return item.name.contains(word, Qt::CaseInsensitive);
            });
            if (!match)
                continue;
        }
        items.push_back(std::move(item));
    }
    m_model->SetItems(std::move(items));
}

void CVxLibraryForm::Rebuild(bool all)
{
    const CVxUserLibrary& library = VX_GetCore()->GetUserLibrary();
    // The user's objects may have moved to other slots; the catalogue's
    // stay where they are unless the whole library was read again.
    if (all) {
        m_thumbnails.clear();
    } else {
        for (auto it = m_thumbnails.begin(); it != m_thumbnails.end();) {
            if (library.IsUserObject(it.key() / 2) || it.key() / 2 >= library.GetSlotCount())
                it = m_thumbnails.erase(it);
            else
                ++it;
        }
    }
    if (m_currentPage >= static_cast<int>(library.GetPages().size()))
        m_currentPage = -1;
    FillPageTree();
    if (m_currentPage < 0)
        SelectPage(0);
    Refill();
}

QPixmap CVxLibraryForm::GetThumbnail(int libIndex)
{
    CVxAppCore* core = VX_GetCore();
    CVxUserLibrary& library = core->GetUserLibrary();
    const auto& pages = library.GetPages();
    const bool show3D = !(m_currentPage >= 0 && m_currentPage < static_cast<int>(pages.size()) &&
                          pages[static_cast<size_t>(m_currentPage)].hide3DThumbs);
    const int key = libIndex * 2 + (show3D ? 1 : 0);
    // A window moved to a screen of another pixel ratio draws them anew.
    const qreal ratio = std::max<qreal>(1.0, devicePixelRatioF());
    const auto found = m_thumbnails.constFind(key);
    if (found != m_thumbnails.constEnd() && found.value().devicePixelRatio() == ratio)
        return found.value();
    CVxPart* part = library.SafeGetPart(libIndex);
    if (!part || !part->inUse)
        return QPixmap();
    const int side = static_cast<int>(std::lround(m_thumbSide * ratio));
    CVxQtDC dc(side, side, true);
    core->LibDrawObjectThumb(&dc, part, show3D, 0, 0, side, side);
    QPixmap pixmap = QPixmap::fromImage(*dc.GetImage());
    pixmap.setDevicePixelRatio(ratio);
    m_thumbnails.insert(key, pixmap);
    ++m_thumbnailsDrawn;
    return pixmap;
}

bool CVxLibraryForm::StartPlacing(int libIndex)
{
    if (!VX_GetCore()->LibStartCreatingObject(nullptr, libIndex))
        return false;
    emit objectPicked(libIndex);
    return true;
}

bool CVxLibraryForm::CurrentPageIsUserPage(int* userPageId) const
{
    const auto& pages = VX_GetCore()->GetUserLibrary().GetPages();
    if (m_currentPage < 0 || m_currentPage >= static_cast<int>(pages.size()) || !m_search->text().isEmpty())
        return false;
    const CVxLibraryPage& page = pages[static_cast<size_t>(m_currentPage)];
    const bool user = page.isUserPage || (page.id == 0 && page.libraryName.IsEmpty());
    if (user && userPageId)
        *userPageId = page.isUserPage ? page.id : 0;
    return user;
}

void CVxLibraryForm::OnContextMenu(const QPoint& pos)
{
    const QModelIndex index = m_view->indexAt(pos);
    const int libIndex = index.isValid() ? index.data(roleLibIndex).toInt() : -1;
    const bool userObject = libIndex >= 0 && VX_GetCore()->GetUserLibrary().IsUserObject(libIndex);
    QMenu menu(this);
    if (libIndex >= 0) {
        menu.addAction(QMsg(342, L"Add to Plan"), this, [this, libIndex] { StartPlacing(libIndex); });
        if (userObject) {
            menu.addSeparator();
            menu.addAction(QMsg(343, L"Rename..."), this, [this, libIndex] { RenameObject(libIndex); });
            menu.addAction(QMsg(344, L"Remove"), this,
                           [libIndex] { VX_GetCore()->LibRemoveObject(libIndex); });
            menu.addAction(QMsg(345, L"Export Object..."), this,
                           [this, libIndex] { ExportObject(libIndex); });
        }
    }
    if (CurrentPageIsUserPage(nullptr)) {
        if (!menu.isEmpty())
            menu.addSeparator();
        menu.addAction(QMsg(346, L"Import Object..."), this, [this] { ImportObject(); });
    }
    if (!menu.isEmpty())
        menu.exec(m_view->viewport()->mapToGlobal(pos));
}

void CVxLibraryForm::RenameObject(int libIndex)
{
    const CVxPart* part = VX_GetCore()->GetUserLibrary().SafeGetPart(libIndex);
    if (!part)
        return;
    bool ok = false;
    const QString name = QInputDialog::getText(this, QMsg(347, L"Rename Object"), QMsg(348, L"Name:"),
                                               QLineEdit::Normal, part->caption.ToQString(), &ok)
                             .trimmed();
    if (!ok || name.isEmpty())
        return;
    if (VX_GetCore()->LibRenameObject(libIndex, CVxStringW(name)))
        Rebuild(false);
}

void CVxLibraryForm::ExportObject(int libIndex)
{
    const CVxPart* part = VX_GetCore()->GetUserLibrary().SafeGetPart(libIndex);
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!part || !host)
        return;
    const QString folder = host->GetUserDocsPath().ToQString();
    const QString path = QFileDialog::getSaveFileName(
        this, QMsg(345, L"Export Object..."), folder + part->caption.ToQString() + QStringLiteral(".pvo"),
        QMsg(349, L"Plaveno objects") + QStringLiteral(" (*.pvo)"));
    if (path.isEmpty())
        return;
    if (!VX_GetCore()->LibExportObject(libIndex, CVxStringW(path)))
        host->MsgBox(Msg(350, L"The object could not be exported."), Msg(34, L"Error"), VX_MB_ICON_WARNING);
}

void CVxLibraryForm::ImportObject()
{
    int userPage = 0;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!CurrentPageIsUserPage(&userPage) || !host)
        return;
    const QString path = QFileDialog::getOpenFileName(
        this, QMsg(346, L"Import Object..."), host->GetUserDocsPath().ToQString(),
        QMsg(349, L"Plaveno objects") + QStringLiteral(" (*.pvo)"));
    if (path.isEmpty())
        return;
    if (VX_GetCore()->LibImportObject(CVxStringW(path), userPage) < 0)
        host->MsgBox(Msg(351, L"The file holds no object that could be imported."), Msg(34, L"Error"),
                     VX_MB_ICON_WARNING);
}

void CVxLibraryForm::UpdateGridSize()
{
    // The cells share the width, so that the thumbnails fill it evenly. The
    // scroll bar's room is always left: cells that changed with it would
    // bring it and take it away again.
    const int width = m_view->width() - 2 * m_view->frameWidth() -
                      m_view->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, m_view) - 1;
    const int columns = std::max(1, width / minCellWidth);
    const QSize hint = m_view->itemDelegate()->sizeHint(QStyleOptionViewItem(), QModelIndex());
    const QSize grid(std::max(minCellWidth, width / columns), hint.height());
    if (m_view->gridSize() != grid)
        m_view->setGridSize(grid);
}

bool CVxLibraryForm::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_view && event->type() == QEvent::Resize)
        UpdateGridSize();
    return QWidget::eventFilter(watched, event);
}

void CVxLibraryForm::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    // Text sizes change the cells.
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        UpdateGridSize();
    // Another language: the page names and the captions come anew.
    if (event->type() == QEvent::LanguageChange) {
        m_search->setPlaceholderText(QMsg(340, L"Search objects"));
        Rebuild(false);
    }
}
