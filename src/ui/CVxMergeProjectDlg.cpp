#include "CVxMergeProjectDlg.h"

#include "CVxAppCore.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxQtDC.h"
#include "CVxUnits.h"
#include "IVxAppHelperCallback.h"
#include "VxLocalizeWidgets.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int kPreviewWidth = 280;
constexpr int kPreviewHeight = 200;
constexpr double kMaxShift = 1e6;

} // namespace

CVxMergeProjectDlg::CVxMergeProjectDlg(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(VX_ToolbarText(89, L"Merge Projects...").remove(QStringLiteral("...")));
    VX_GetCore()->GetProject().CopyTo(&m_current);

    auto* layout = new QVBoxLayout(this);
    auto* projects = new QHBoxLayout;
    const QString titles[2] = {QStringLiteral("Current Project"), QStringLiteral("Merge With")};
    const QString unit = CVxUnits::GetUnitText(m_current.m_unit).ToQString();
    for (int i = 0; i < 2; ++i) {
        auto* group = new QGroupBox(titles[i], this);
        auto* grid = new QGridLayout(group);
        m_preview[i] = new QLabel(group);
        m_preview[i]->setFixedSize(kPreviewWidth, kPreviewHeight);
        m_preview[i]->setAlignment(Qt::AlignCenter);
        m_preview[i]->setFrameShape(QFrame::StyledPanel);
        grid->addWidget(m_preview[i], 0, 0, 1, 4);
        for (int axis = 0; axis < 2; ++axis) {
            auto* box = new QDoubleSpinBox(group);
            box->setRange(-kMaxShift, kMaxShift);
            box->setDecimals(2);
            box->setSuffix(QLatin1Char(' ') + unit);
            m_shift[i][axis] = box;
            grid->addWidget(
                new QLabel(axis == 0 ? QStringLiteral("Shift X:") : QStringLiteral("Shift Y:"), group), 1,
                axis * 2);
            grid->addWidget(box, 1, axis * 2 + 1);
        }
        projects->addWidget(group);
    }
    layout->addLayout(projects);

    auto* browse = new QPushButton(VX_ToolbarText(80, L"Browse..."), this);
    browse->setObjectName(QStringLiteral("browseButton"));
    connect(browse, &QPushButton::clicked, this, &CVxMergeProjectDlg::OnBrowse);
    auto* row = new QHBoxLayout;
    row->addWidget(browse);
    struct SVxAlign
    {
        int edge;
        int text;
        const wchar_t* english;
    };
    const SVxAlign aligns[] = {{EDGE_LEFT, 168, L"Align Left"},
                               {EDGE_RIGHT, 170, L"Align Right"},
                               {EDGE_TOP, 171, L"Align Top"},
                               {EDGE_BOTTOM, 173, L"Align Bottom"}};
    for (const SVxAlign& align : aligns) {
        auto* button = new QPushButton(VX_ToolbarText(align.text, align.english), this);
        const int edge = align.edge;
        connect(button, &QPushButton::clicked, this, [this, edge] { Align(edge); });
        row->addWidget(button);
    }
    row->addStretch();
    m_newFloor = new QCheckBox(QStringLiteral("Create New Floor"), this);
    row->addWidget(m_newFloor);
    layout->addLayout(row);

    m_buttonBox = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    LocalizeButtonBox(m_buttonBox);
    connect(m_buttonBox, &QDialogButtonBox::accepted, this, &CVxMergeProjectDlg::OnAccepted);
    connect(m_buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(m_buttonBox);

    UpdatePreview(PROJECT_CURRENT);
    UpdatePreview(PROJECT_MERGE);
}

CVxMergeProjectDlg::~CVxMergeProjectDlg()
{
    // A second project that was not merged leaves nothing unpacked behind;
    // a merged one's files are the project's now.
    if (m_loaded && !m_merged)
        m_second.RemoveTempFiles();
}

bool CVxMergeProjectDlg::LoadSecondProject(const CVxStringW& path)
{
    if (m_loaded)
        m_second.RemoveTempFiles();
    m_loaded = CVxAppCore::LoadProjectForMerge(path, m_current, &m_second, this);
    if (!m_loaded)
        m_second.Reset();
    UpdatePreview(PROJECT_MERGE);
    return m_loaded;
}

void CVxMergeProjectDlg::OnBrowse()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return;
    const CVxStringW filter = VX_GetLoc()->LocalizeMessage(18, L"Plaveno projects") + L" (*.pvp *.mst)";
    const CVxStringW path = host->GetOpenProjectFileName(CVxStringW(L"Open saved room"), filter,
                                                         VX_GetOptions()->m_lastOpenFolder);
    if (path.IsEmpty())
        return;
    // A file that can't be merged was explained by the loader.
    LoadSecondProject(path);
}

void CVxMergeProjectDlg::Align(int edge)
{
    const bool vertical = edge == EDGE_TOP || edge == EDGE_BOTTOM;
    const double sizes[2] = {vertical ? m_current.m_height : m_current.m_width,
                             m_loaded ? (vertical ? m_second.m_height : m_second.m_width) : 0};
    const double largest = std::max(sizes[0], sizes[1]);
    for (int i = 0; i < 2; ++i) {
        const bool farEdge = edge == EDGE_RIGHT || edge == EDGE_BOTTOM;
        GetShiftBox(i, vertical)->setValue(farEdge ? largest - sizes[i] : 0);
    }
}

void CVxMergeProjectDlg::OnAccepted()
{
    if (!m_loaded) {
        accept();
        return;
    }
    const CVxDPoint shift(m_shift[PROJECT_CURRENT][0]->value(), m_shift[PROJECT_CURRENT][1]->value());
    const CVxDPoint secondShift(m_shift[PROJECT_MERGE][0]->value(), m_shift[PROJECT_MERGE][1]->value());
    VX_GetCore()->MergeProjects(&m_current, &m_second, shift, secondShift, m_newFloor->isChecked());
    m_merged = true;
    accept();
}

QImage CVxMergeProjectDlg::GetPreview(int project) const
{
    const QPixmap picture = m_preview[project]->pixmap();
    return picture.isNull() ? QImage() : picture.toImage();
}

void CVxMergeProjectDlg::UpdatePreview(int project)
{
    QLabel* label = m_preview[project];
    if (project == PROJECT_MERGE && !m_loaded) {
        label->setPixmap(QPixmap());
        return;
    }
    CVxProject& shown = project == PROJECT_CURRENT ? m_current : m_second;
    CVxQtDC dc(kPreviewWidth, kPreviewHeight, true);
    VX_GetCore()->DrawProjectThumbOnWhite(&dc, shown, kPreviewWidth, kPreviewHeight);
    label->setPixmap(QPixmap::fromImage(*dc.GetImage()));
}
