#include "CVxOptionsDlg.h"

#include "CVxAppCore.h"
#include "CVxUnits.h"
#include "VxDlgKit.h"
#include "VxNumbers.h"
#include "VxSettingsPages.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

#include <cmath>
#include <cstring>

namespace {
const CVxDlgTexts T("OptionsDlg");

QColor ToQColor(unsigned word)
{
    return QColor(static_cast<int>(word & 0xFF), static_cast<int>((word >> 8) & 0xFF),
                  static_cast<int>((word >> 16) & 0xFF));
}

unsigned FromQColor(const QColor& color)
{
    return static_cast<unsigned>(color.red()) | (static_cast<unsigned>(color.green()) << 8) |
           (static_cast<unsigned>(color.blue()) << 16);
}

void ShowColor(QPushButton* button, unsigned word)
{
    button->setProperty("colorWord", word);
    button->setStyleSheet(QStringLiteral("background-color: %1;").arg(ToQColor(word).name()));
}

QComboBox* UnitCombo(QWidget* parent, bool automatic)
{
    auto* combo = new QComboBox(parent);
    if (automatic)
        combo->addItem(T(101, L"Automatic"), QString());
    for (int i = 0; i < CVxUnits::UNIT_COUNT; ++i)
        combo->addItem(CVxUnits::GetUnitName(i).ToQString(), QString::fromLatin1(CVxUnits::sUnitEngText[i]));
    return combo;
}
} // namespace

CVxOptionsDlg::CVxOptionsDlg(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("OptionsDlg"));
    setWindowTitle(T(100, L"Options"));
    auto* column = new QVBoxLayout(this);
    m_pages = new QTabWidget(this);
    column->addWidget(m_pages);
    std::vector<QFormLayout*> forms;
    for (const SVxSettingPage& page : VX_GetSettingPages()) {
        auto* widget = new QWidget(m_pages);
        forms.push_back(new QFormLayout(widget));
        m_pages->addTab(widget, T(page.row, page.english));
    }

    const CVxOptions* options = VX_GetOptions();
    for (const SVxSettingItem& item : VX_GetSettingItems()) {
        QWidget* page = m_pages->widget(item.page);
        QFormLayout* form = forms[static_cast<size_t>(item.page)];
        const QString label = T(item.row, item.english);
        QWidget* field = nullptr;
        QWidget* shown = nullptr;
        switch (item.kind) {
        case EVxSettingKind::Bool: {
            auto* check = new QCheckBox(label, page);
            check->setChecked(options->*item.boolValue);
            form->addRow(check);
            field = check;
            break;
        }
        case EVxSettingKind::Int: {
            auto* spin = new QSpinBox(page);
            spin->setRange(static_cast<int>(item.minimum), static_cast<int>(item.maximum));
            spin->setValue(options->*item.intValue);
            field = spin;
            break;
        }
        case EVxSettingKind::Double: {
            auto* edit = new QLineEdit(
                VX_DblFormat(options->*item.doubleValue, VX_DF_DECIMAL, false).ToQString(), page);
            edit->setMaxLength(24);
            field = edit;
            break;
        }
        case EVxSettingKind::LengthCm: {
            auto* edit = new CVxLengthField(options->*item.doubleValue, CVxUnits::UNIT_CM, false, page);
            field = edit;
            shown = edit->WithUnit();
            break;
        }
        case EVxSettingKind::Unit:
        case EVxSettingKind::UnitOrAuto: {
            auto* combo = UnitCombo(page, item.kind == EVxSettingKind::UnitOrAuto);
            const int index = combo->findData((options->*item.textValue).ToQString());
            combo->setCurrentIndex(index >= 0 ? index : (item.kind == EVxSettingKind::Unit ? 1 : 0));
            field = combo;
            break;
        }
        case EVxSettingKind::Color: {
            auto* button = new QPushButton(page);
            button->setFixedWidth(60);
            ShowColor(button, options->*item.colorValue);
            connect(button, &QPushButton::clicked, this, [button, label] {
                const QColor chosen =
                    QColorDialog::getColor(ToQColor(button->property("colorWord").toUInt()), button, label);
                if (chosen.isValid())
                    ShowColor(button, FromQColor(chosen));
            });
            field = button;
            break;
        }
        case EVxSettingKind::Choice: {
            auto* combo = new QComboBox(page);
            for (const SVxSettingChoice& choice : item.choices)
                combo->addItem(T(choice.row, choice.english), choice.value);
            combo->setCurrentIndex(std::max(0, combo->findData(options->*item.intValue)));
            field = combo;
            break;
        }
        }
        field->setObjectName(QString::fromLatin1(item.key));
        if (item.kind != EVxSettingKind::Bool)
            form->addRow(label, shown ? shown : field);
        m_fields.push_back(field);
    }
    m_problem = VX_ProblemLabel(this);
    column->addWidget(m_problem);
    column->addWidget(VX_OkCancelButtons(this));
}

QWidget* CVxOptionsDlg::FieldOf(const char* key) const
{
    const std::vector<SVxSettingItem>& items = VX_GetSettingItems();
    for (size_t i = 0; i < items.size() && i < m_fields.size(); ++i)
        if (std::strcmp(items[i].key, key) == 0)
            return m_fields[i];
    return nullptr;
}

bool CVxOptionsDlg::Store()
{
    const std::vector<SVxSettingItem>& items = VX_GetSettingItems();
    // Everything is read and checked first, so that a bad field changes
    // nothing.
    std::vector<double> numbers(items.size(), 0);
    for (size_t i = 0; i < items.size(); ++i) {
        const SVxSettingItem& item = items[i];
        bool ok = true;
        if (item.kind == EVxSettingKind::Double) {
            const auto* edit = static_cast<QLineEdit*>(m_fields[i]);
            numbers[i] = DblRead(CVxStringW(edit->text().trimmed()), 0, &ok);
        } else if (item.kind == EVxSettingKind::LengthCm) {
            ok = static_cast<CVxLengthField*>(m_fields[i])->GetValue(numbers[i]);
        } else {
            continue;
        }
        if (!ok || !std::isfinite(numbers[i]) || numbers[i] < item.minimum || numbers[i] > item.maximum) {
            m_pages->setCurrentIndex(item.page);
            m_fields[i]->setFocus();
            return false;
        }
    }

    CVxOptions* options = VX_GetOptions();
    for (size_t i = 0; i < items.size(); ++i) {
        const SVxSettingItem& item = items[i];
        QWidget* field = m_fields[i];
        switch (item.kind) {
        case EVxSettingKind::Bool:
            options->*item.boolValue = static_cast<QCheckBox*>(field)->isChecked();
            break;
        case EVxSettingKind::Int:
            options->*item.intValue = static_cast<QSpinBox*>(field)->value();
            break;
        case EVxSettingKind::Double:
        case EVxSettingKind::LengthCm:
            options->*item.doubleValue = numbers[i];
            break;
        case EVxSettingKind::Unit:
        case EVxSettingKind::UnitOrAuto:
            options->*item.textValue = CVxStringW(static_cast<QComboBox*>(field)->currentData().toString());
            break;
        case EVxSettingKind::Color:
            options->*item.colorValue = field->property("colorWord").toUInt();
            break;
        case EVxSettingKind::Choice:
            options->*item.intValue = static_cast<QComboBox*>(field)->currentData().toInt();
            break;
        }
    }
    return true;
}

void CVxOptionsDlg::accept()
{
    if (!Store()) {
        VX_ShowProblem(m_problem, T(102, L"Please enter a number within the allowed range."));
        return;
    }
    VX_GetCore()->ApplyOptionsChange();
    QDialog::accept();
}
