#include "CVxPropertyWidgets.h"

#include "CVxAppCore.h"
#include "CVxColorPickerDlg.h"
#include "CVxDRect.h"
#include "CVxFloor.h"
#include "CVxMainRenderArea.h"
#include "CVxMainWindow.h"
#include "CVxUnits.h"
#include "VxColorConvert.h"
#include "VxNumbers.h"
#include "VxTypedLength.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>

#include <algorithm>

QString VX_DlgText(CVxLocalize::EVxLocTable table, int row, const wchar_t* english)
{
    CVxLocalize* loc = VX_GetLoc();
    return loc->LocalizeDlgString(loc->GetTableIndex(table), row, CVxStringW(english)).ToQString();
}

QString VX_MsgText(int row, const wchar_t* english)
{
    return VX_GetLoc()->LocalizeMessage(row, CVxStringW(english)).ToQString();
}

QColor VX_ToQColor(unsigned colour)
{
    return QColor(static_cast<int>(colour & 0xFFu), static_cast<int>((colour >> 8) & 0xFFu),
                  static_cast<int>((colour >> 16) & 0xFFu));
}

unsigned VX_FromQColor(const QColor& colour)
{
    return static_cast<unsigned>(colour.red()) | (static_cast<unsigned>(colour.green()) << 8) |
           (static_cast<unsigned>(colour.blue()) << 16);
}

CVxLengthEdit::CVxLengthEdit(EKind kind, int unit, QWidget* parent)
    : QWidget(parent), m_kind(kind), m_unit(unit)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    m_edit = new QLineEdit(this);
    m_edit->setMinimumWidth(70);
    m_edit->setPlaceholderText(VX_MsgText(37, L"differ."));
    row->addWidget(m_edit, 1);
    QString unitText = kind == ANGLE ? QStringLiteral("\u00B0") : CVxUnits::GetUnitText(unit).ToQString();
    m_unitLabel = new QLabel(unitText, this);
    m_unitLabel->setMinimumWidth(24);
    row->addWidget(m_unitLabel);
    connect(m_edit, &QLineEdit::textEdited, this, &CVxLengthEdit::OnTextEdited);
}

void CVxLengthEdit::SetValue(const std::optional<double>& value)
{
    if (!value) {
        m_initialText.clear();
    } else if (m_kind == ANGLE) {
        m_initialText = CVxStringW(DblRound2x(*value)).ToQString();
    } else {
        // Inches read as feet and inches, as a plan in inches is measured.
        m_initialText = VX_DblFormat(DblRound2x(*value), VX_DF_FEET, false, m_unit).ToQString();
    }
    m_edit->setText(m_initialText);
    m_edit->setStyleSheet(QString());
}

bool CVxLengthEdit::Parse(const QString& text, double& out) const
{
    const CVxStringW typed(text);
    switch (m_kind) {
    case ANGLE:
        return VX_ParseTypedAngle(typed, out);
    case OFFSET:
        return VX_ParseTypedOffset(typed, m_unit, out);
    case LENGTH:
        break;
    }
    return VX_ParseTypedLength(typed, m_unit, out);
}

std::optional<double> CVxLengthEdit::GetEditedValue() const
{
    const QString text = m_edit->text().trimmed();
    if (text.isEmpty() || text == m_initialText.trimmed())
        return std::nullopt;
    double value = 0;
    if (!Parse(text, value))
        return std::nullopt;
    return DblRound2x(value);
}

bool CVxLengthEdit::IsValid() const
{
    const QString text = m_edit->text().trimmed();
    double value = 0;
    return text.isEmpty() || text == m_initialText.trimmed() || Parse(text, value);
}

void CVxLengthEdit::OnTextEdited()
{
    m_edit->setStyleSheet(IsValid() ? QString() : QStringLiteral("QLineEdit { background: #ffd6d6; }"));
    if (IsValid())
        emit valueEdited();
}

CVxAppearanceButton::CVxAppearanceButton(QWidget* parent) : QToolButton(parent)
{
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setMinimumWidth(110);
    setIconSize(QSize(28, 16));
    connect(this, &QToolButton::clicked, this, &CVxAppearanceButton::OnClicked);
    UpdateLook();
}

void CVxAppearanceButton::SetAppearance(const std::optional<CVxAppearance>& appearance)
{
    m_appearance = appearance;
    m_picked = false;
    UpdateLook();
}

void CVxAppearanceButton::Pick(const CVxAppearance& appearance)
{
    m_appearance = appearance;
    m_picked = true;
    UpdateLook();
    emit appearancePicked();
}

void CVxAppearanceButton::OnClicked()
{
    CVxAppearance start = m_appearance.value_or(CVxAppearance());
    CVxColorPickerDlg dlg(start, window());
    if (dlg.exec() == QDialog::Accepted)
        Pick(dlg.GetAppearance());
}

void CVxAppearanceButton::UpdateLook()
{
    if (!m_appearance) {
        setIcon(QIcon());
        setText(VX_MsgText(37, L"differ."));
        return;
    }
    QPixmap swatch(iconSize());
    const CVxMaterial& main = m_appearance->main;
    const bool off = (main.color & 0xFF000000u) == 0xEF000000u;
    swatch.fill(off ? QColor(Qt::transparent) : VX_ToQColor(main.color));
    QPainter painter(&swatch);
    if (!main.texture.IsEmpty()) {
        const QPixmap picture(main.texture.ToQString());
        if (!picture.isNull())
            painter.drawPixmap(swatch.rect(), picture);
    }
    painter.setPen(QColor(90, 90, 90));
    painter.drawRect(swatch.rect().adjusted(0, 0, -1, -1));
    painter.end();
    setIcon(QIcon(swatch));
    if (!main.texture.IsEmpty())
        setText(main.texture.ExtractFileTitleWithoutExt().ToQString());
    else if (off)
        setText(VX_MsgText(1202, L"None"));
    else
        setText(QStringLiteral("#") + VX_RGBtoHex(main.color).ToQString());
}

void VX_PlaceBesidePlanRect(QDialog* dialog, const CVxDRect& planRect)
{
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (!dialog || !window || !window->GetRenderArea())
        return;
    const CVxAppCore* core = VX_GetCore();
    const VxPOINT origin = core->GetObjectOrigin();
    const double zoom = core->GetZoom();
    const QWidget* view = window->GetRenderArea();
    const QPoint topLeft = view->mapToGlobal(QPoint(static_cast<int>(origin.x + planRect.left * zoom),
                                                    static_cast<int>(origin.y + planRect.top * zoom)));
    const QPoint bottomRight = view->mapToGlobal(QPoint(static_cast<int>(origin.x + planRect.right * zoom),
                                                        static_cast<int>(origin.y + planRect.bottom * zoom)));
    const QRect thing = QRect(topLeft, bottomRight).normalized();
    const QRect space = window->frameGeometry();
    dialog->adjustSize();
    const QSize size = dialog->frameGeometry().size().expandedTo(dialog->sizeHint());
    constexpr int gap = 16;
    const int y = std::clamp(thing.center().y() - size.height() / 2, space.top(),
                             std::max(space.top(), space.bottom() - size.height()));
    const int x = std::clamp(thing.center().x() - size.width() / 2, space.left(),
                             std::max(space.left(), space.right() - size.width()));
    if (thing.right() + gap + size.width() <= space.right())
        dialog->move(thing.right() + gap, y);
    else if (thing.left() - gap - size.width() >= space.left())
        dialog->move(thing.left() - gap - size.width(), y);
    else if (thing.bottom() + gap + size.height() <= space.bottom())
        dialog->move(x, thing.bottom() + gap);
    else if (thing.top() - gap - size.height() >= space.top())
        dialog->move(x, thing.top() - gap - size.height());
}

bool VX_GetSelectionPlanRect(CVxDRect& out)
{
    bool any = false;
    for (const CVxPart& part : VX_GetCore()->GetProject().GetFloor()->m_objects) {
        if (!part.inUse || !part.selected)
            continue;
        CVxDRect box;
        part.GetBoundingRect(&box, 1.0);
        if (!any) {
            out = box;
            any = true;
        } else {
            out.left = std::min(out.left, box.left);
            out.top = std::min(out.top, box.top);
            out.right = std::max(out.right, box.right);
            out.bottom = std::max(out.bottom, box.bottom);
        }
    }
    return any;
}
