#include "CVxProjectPropertiesDlg.h"

#include "CVxAppCore.h"
#include "CVxUnits.h"
#include "VxDlgKit.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
const CVxDlgTexts T("ProjectPropertiesDlg");

void FillUnits(QComboBox* combo)
{
    for (int i = 0; i < CVxUnits::UNIT_COUNT; ++i)
        combo->addItem(CVxUnits::GetUnitName(i).ToQString(), QString::fromLatin1(CVxUnits::sUnitEngText[i]));
}
} // namespace

CVxProjectPropertiesDlg::CVxProjectPropertiesDlg(QWidget* parent)
    : QDialog(parent), m_settings(VX_GetCore()->ReadProjectSettings())
{
    setObjectName(QStringLiteral("ProjectPropertiesDlg"));
    setWindowTitle(T(1, L"Project Properties"));
    const int unit = m_settings.unit;
    auto* column = new QVBoxLayout(this);

    auto* top = new QFormLayout;
    m_unit = new QComboBox(this);
    m_unit->setObjectName(QStringLiteral("CbUnit"));
    FillUnits(m_unit);
    m_unit->setCurrentIndex(unit);
    top->addRow(T(2, L"Unit:"), m_unit);
    m_statUnit = new QComboBox(this);
    m_statUnit->setObjectName(QStringLiteral("CbStatUnit"));
    m_statUnit->addItem(T(4, L"Automatic"), QString());
    FillUnits(m_statUnit);
    m_statUnit->setCurrentIndex(std::max(0, m_statUnit->findData(m_settings.statUnit.ToQString())));
    top->addRow(T(3, L"Unit of room areas:"), m_statUnit);
    column->addLayout(top);

    auto* size = new QGroupBox(T(15, L"Size"), this);
    auto* sizeForm = new QFormLayout(size);
    m_width = new CVxLengthField(m_settings.width, unit, false, size);
    m_depth = new CVxLengthField(m_settings.height, unit, false, size);
    m_width->setObjectName(QStringLiteral("EdWidth"));
    m_depth->setObjectName(QStringLiteral("EdDepth"));
    sizeForm->addRow(T(5, L"Width:"), m_width->WithUnit());
    sizeForm->addRow(T(6, L"Depth:"), m_depth->WithUnit());
    column->addWidget(size);

    auto* walls = new QGroupBox(T(7, L"New Walls"), this);
    auto* wallsForm = new QFormLayout(walls);
    m_thickness = new CVxLengthField(m_settings.defWallThickness, unit, false, walls);
    m_height = new CVxLengthField(m_settings.defWallHeight, unit, false, walls);
    m_thickness->setObjectName(QStringLiteral("EdWallThickness"));
    m_height->setObjectName(QStringLiteral("EdWallHeight"));
    wallsForm->addRow(T(8, L"Thickness:"), m_thickness->WithUnit());
    wallsForm->addRow(T(9, L"Height:"), m_height->WithUnit());
    column->addWidget(walls);

    auto* floors = new QGroupBox(T(10, L"Floors"), this);
    auto* floorsColumn = new QVBoxLayout(floors);
    m_floors = new QTableWidget(static_cast<int>(m_settings.floors.size()), 2, floors);
    m_floors->setObjectName(QStringLiteral("FloorList"));
    m_floors->setHorizontalHeaderLabels({T(12, L"Wall height"), T(13, L"Floor thickness")});
    QStringList rows;
    for (size_t i = 0; i < m_settings.floors.size(); ++i) {
        rows << T(17, L"Floor %1").arg(i + 1);
        auto* height = new CVxLengthField(m_settings.floors[i].wallHeight, unit, false, m_floors);
        auto* thickness = new CVxLengthField(m_settings.floors[i].floorThickness, unit, true, m_floors);
        m_floors->setCellWidget(static_cast<int>(i), 0, height->WithUnit());
        m_floors->setCellWidget(static_cast<int>(i), 1, thickness->WithUnit());
        m_floorHeights.push_back(height);
        m_floorThicknesses.push_back(thickness);
    }
    m_floors->setVerticalHeaderLabels(rows);
    m_floors->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_floors->setMaximumHeight(40 + 30 * std::min<int>(4, static_cast<int>(m_settings.floors.size())));
    floorsColumn->addWidget(m_floors);
    column->addWidget(floors);

    auto* commentsLabel = new QLabel(T(14, L"Comments:"), this);
    column->addWidget(commentsLabel);
    m_comments = new QPlainTextEdit(m_settings.comments.ToQString(), this);
    m_comments->setObjectName(QStringLiteral("EdComments"));
    m_comments->setMaximumHeight(90);
    column->addWidget(m_comments);

    m_problem = VX_ProblemLabel(this);
    column->addWidget(m_problem);
    column->addWidget(VX_OkCancelButtons(this));
    connect(m_unit, &QComboBox::currentIndexChanged, this, &CVxProjectPropertiesDlg::OnUnitChanged);
}

std::vector<CVxLengthField*> CVxProjectPropertiesDlg::AllLengths() const
{
    std::vector<CVxLengthField*> all = {m_width, m_depth, m_thickness, m_height};
    all.insert(all.end(), m_floorHeights.begin(), m_floorHeights.end());
    all.insert(all.end(), m_floorThicknesses.begin(), m_floorThicknesses.end());
    return all;
}

void CVxProjectPropertiesDlg::OnUnitChanged()
{
    // The lengths stay the same lengths; they are only told in the new unit.
    for (CVxLengthField* edit : AllLengths())
        edit->SetUnit(m_unit->currentIndex());
}

bool CVxProjectPropertiesDlg::GetSettings(SVxProjectSettings& settings)
{
    settings = m_settings;
    settings.unit = m_unit->currentIndex();
    settings.statUnit = CVxStringW(m_statUnit->currentData().toString());
    struct SVxField
    {
        CVxLengthField* edit;
        double* value;
    };
    std::vector<SVxField> fields = {{m_width, &settings.width},
                                    {m_depth, &settings.height},
                                    {m_thickness, &settings.defWallThickness},
                                    {m_height, &settings.defWallHeight}};
    for (size_t i = 0; i < settings.floors.size() && i < m_floorHeights.size(); ++i) {
        fields.push_back({m_floorHeights[i], &settings.floors[i].wallHeight});
        fields.push_back({m_floorThicknesses[i], &settings.floors[i].floorThickness});
    }
    for (const SVxField& field : fields) {
        if (!field.edit->GetValue(*field.value) || *field.value < 0) {
            field.edit->setFocus();
            field.edit->selectAll();
            return false;
        }
    }
    settings.comments = CVxStringW(m_comments->toPlainText());
    return true;
}

void CVxProjectPropertiesDlg::accept()
{
    SVxProjectSettings settings;
    if (!GetSettings(settings)) {
        VX_ShowProblem(m_problem, T(16, L"Please enter a length, such as 2.5 m or 8' 2\"."));
        return;
    }
    VX_GetCore()->ApplyProjectSettings(settings);
    QDialog::accept();
}
