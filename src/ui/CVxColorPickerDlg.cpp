#include "CVxColorPickerDlg.h"

#include "CVxColorSwatchLibrary.h"
#include "CVxMaterialList.h"
#include "CVxPropertyWidgets.h"
#include "IVxAppHelperCallback.h"
#include "VxColorConvert.h"
#include "VxLocalizeWidgets.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int kRecentCount = 12;

CVxStringW RecentFile()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    return host ? host->GetUserAppDataPath() + L"RecentColors.ini" : CVxStringW();
}

QIcon ColorIcon(unsigned colour, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(VX_ToQColor(colour));
    QPainter painter(&pixmap);
    painter.setPen(QColor(120, 120, 120));
    painter.drawRect(0, 0, size - 1, size - 1);
    return QIcon(pixmap);
}

} // namespace

CVxColorPickerDlg::CVxColorPickerDlg(const CVxAppearance& start, QWidget* parent)
    : QDialog(parent), m_appearance(start)
{
    setObjectName(QStringLiteral("ColorPickerDlg"));
    setWindowTitle(VX_MsgText(1203, L"Colour and Texture"));
    CVxColorSwatchLibrary* library = VX_GetColorSwatchLibrary();
    if (!library->IsInitialized())
        library->InitLibrary();

    auto* top = new QVBoxLayout(this);
    auto* columns = new QHBoxLayout;
    top->addLayout(columns);

    auto* left = new QVBoxLayout;
    columns->addLayout(left, 3);
    auto* pick = new QHBoxLayout;
    m_swatches = new QComboBox(this);
    // The catalogues' names are data, not texts of the program.
    m_swatches->setObjectName(QStringLiteral("SwatchCombo"));
    for (int i = 0; i < library->GetCount(); ++i)
        m_swatches->addItem(library->SafeGetSwatch(i)->GetName().ToQString());
    m_search = new QLineEdit(this);
    m_search->setPlaceholderText(VX_MsgText(1205, L"Search"));
    m_search->setClearButtonEnabled(true);
    pick->addWidget(m_swatches, 1);
    pick->addWidget(m_search, 1);
    left->addLayout(pick);
    m_list = new QListWidget(this);
    m_list->setViewMode(QListView::IconMode);
    m_list->setIconSize(QSize(22, 22));
    m_list->setGridSize(QSize(28, 28));
    m_list->setResizeMode(QListView::Adjust);
    m_list->setMovement(QListView::Static);
    m_list->setMinimumSize(300, 220);
    left->addWidget(m_list, 1);
    auto* recentLabel = new QLabel(VX_MsgText(1206, L"Recent colours:"), this);
    left->addWidget(recentLabel);
    m_recentRow = new QHBoxLayout;
    m_recentRow->setSpacing(2);
    left->addLayout(m_recentRow);

    auto* form = new QFormLayout;
    columns->addLayout(form, 2);
    m_preview = new QLabel(this);
    m_preview->setFixedSize(120, 60);
    form->addRow(m_preview);
    m_swatchName = new QLabel(this);
    m_swatchName->setWordWrap(true);
    form->addRow(m_swatchName);
    m_hex = new QLineEdit(this);
    m_hex->setMaxLength(7);
    form->addRow(VX_MsgText(1207, L"Hex:"), m_hex);
    m_ncs = new QLineEdit(this);
    m_ncs->setPlaceholderText(QStringLiteral("S 1050-Y90R"));
    form->addRow(VX_MsgText(1208, L"NCS:"), m_ncs);
    m_transparency = new QSpinBox(this);
    m_transparency->setRange(0, 100);
    m_transparency->setSuffix(QStringLiteral(" %"));
    m_transparency->setValue(std::clamp(start.main.transparency, 0, 100));
    form->addRow(VX_MsgText(1213, L"Transparency:"), m_transparency);
    m_texture = new QLineEdit(this);
    m_texture->setReadOnly(true);
    form->addRow(VX_MsgText(1209, L"Texture:"), m_texture);
    auto* textureButtons = new QHBoxLayout;
    auto* browse = new QPushButton(VX_MsgText(1210, L"Browse..."), this);
    auto* remove = new QPushButton(VX_MsgText(1211, L"Remove"), this);
    textureButtons->addWidget(browse);
    textureButtons->addWidget(remove);
    form->addRow(textureButtons);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    LocalizeButtonBox(buttons);
    top->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_swatches, &QComboBox::currentIndexChanged, this, &CVxColorPickerDlg::FillSwatchList);
    connect(m_search, &QLineEdit::textChanged, this, &CVxColorPickerDlg::FillSwatchList);
    connect(m_list, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        SetColor(item->data(Qt::UserRole).toUInt());
        m_swatchName->setText(item->toolTip());
    });
    connect(m_hex, &QLineEdit::textEdited, this, &CVxColorPickerDlg::OnHexEdited);
    connect(m_ncs, &QLineEdit::textEdited, this, &CVxColorPickerDlg::OnNcsEdited);
    connect(m_transparency, &QSpinBox::valueChanged, this, [this](int value) {
        m_appearance.main.transparency = value;
        UpdatePreview();
    });
    connect(browse, &QPushButton::clicked, this, &CVxColorPickerDlg::OnBrowseTexture);
    connect(remove, &QPushButton::clicked, this, [this] { SetTexture(CVxStringW()); });

    FillSwatchList();
    FillRecent();
    UpdatePreview();
}

void CVxColorPickerDlg::FillSwatchList()
{
    m_list->clear();
    CVxColorSwatch* swatch = VX_GetColorSwatchLibrary()->SafeGetSwatch(m_swatches->currentIndex());
    if (!swatch)
        return;
    const QString needle = m_search->text().trimmed();
    for (const CVxColorSwatchItem& item : swatch->GetItems()) {
        const QString name = item.name.ToQString();
        const QString code = item.code.ToQString();
        if (!needle.isEmpty() && !name.contains(needle, Qt::CaseInsensitive) &&
            !code.contains(needle, Qt::CaseInsensitive) &&
            !item.category.ToQString().contains(needle, Qt::CaseInsensitive))
            continue;
        auto* entry = new QListWidgetItem(ColorIcon(item.color, 22), QString(), m_list);
        entry->setToolTip(code.isEmpty() ? name : code + QStringLiteral(" ") + name);
        entry->setData(Qt::UserRole, item.color);
    }
}

void CVxColorPickerDlg::FillRecent()
{
    while (QLayoutItem* item = m_recentRow->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    CVxMaterialList recent;
    recent.LoadFromDisk(RecentFile());
    for (size_t i = 0; i < recent.size() && i < static_cast<size_t>(kRecentCount); ++i) {
        const unsigned colour = recent[i].color;
        auto* button = new QToolButton(this);
        button->setIcon(ColorIcon(colour, 16));
        button->setAutoRaise(true);
        button->setToolTip(QStringLiteral("#") + VX_RGBtoHex(colour).ToQString());
        connect(button, &QToolButton::clicked, this, [this, colour] { SetColor(colour); });
        m_recentRow->addWidget(button);
    }
    m_recentRow->addStretch(1);
}

void CVxColorPickerDlg::SetColor(unsigned colour)
{
    m_swatchName->clear();
    m_appearance.main.color = colour & 0xFFFFFFu;
    UpdatePreview();
}

void CVxColorPickerDlg::SetTexture(const CVxStringW& path)
{
    m_appearance.main.texture = path;
    UpdatePreview();
}

void CVxColorPickerDlg::UpdatePreview()
{
    const unsigned colour = m_appearance.main.color;
    QPixmap pixmap(m_preview->size());
    pixmap.fill(VX_ToQColor(colour));
    QPainter painter(&pixmap);
    if (!m_appearance.main.texture.IsEmpty()) {
        const QPixmap picture(m_appearance.main.texture.ToQString());
        if (!picture.isNull())
            painter.drawTiledPixmap(pixmap.rect(), picture.scaledToHeight(pixmap.height()));
    }
    painter.setPen(QColor(90, 90, 90));
    painter.drawRect(pixmap.rect().adjusted(0, 0, -1, -1));
    painter.end();
    m_preview->setPixmap(pixmap);
    if (!m_hex->hasFocus())
        m_hex->setText(VX_RGBtoHex(colour).ToQString());
    if (!m_ncs->hasFocus())
        m_ncs->setText(VX_RGBtoNCS(colour).ToQString());
    m_texture->setText(m_appearance.main.texture.ExtractFileTitle().ToQString());
}

void CVxColorPickerDlg::OnHexEdited()
{
    QString text = m_hex->text().trimmed();
    if (text.startsWith(QLatin1Char('#')))
        text.remove(0, 1);
    unsigned colour = 0;
    if (VX_HexToRGB(CVxStringW(text), colour))
        SetColor(colour);
}

void CVxColorPickerDlg::OnNcsEdited()
{
    unsigned colour = 0;
    if (VX_NCStoRGB(CVxStringW(m_ncs->text().trimmed()), colour))
        SetColor(colour);
}

void CVxColorPickerDlg::OnBrowseTexture()
{
    const QString file = QFileDialog::getOpenFileName(this, VX_MsgText(1209, L"Texture:"), QString(),
                                                      VX_MsgText(1212, L"Pictures") +
                                                          QStringLiteral(" (*.png *.jpg *.jpeg *.bmp)"));
    if (!file.isEmpty())
        SetTexture(CVxStringW(file));
}

void CVxColorPickerDlg::accept()
{
    CVxMaterialList recent;
    recent.LoadFromDisk(RecentFile());
    recent.AddRecent(CVxMaterial(m_appearance.main.color, 0, CVxStringW()), kRecentCount);
    recent.SaveToDisk(RecentFile());
    QDialog::accept();
}
