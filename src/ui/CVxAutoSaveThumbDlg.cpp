#include "CVxAutoSaveThumbDlg.h"

#include "CVxAppCore.h"
#include "CVxAutoSave.h"
#include "CVxUtils.h"
#include "IVxAppHelperCallback.h"

#include <QLabel>
#include <QPixmap>
#include <QVBoxLayout>

void CVxAutoSaveThumbreader::run()
{
    QImage image;
    if (image.load(m_path))
        emit onThumbLoaded(image);
}

CVxAutoSaveThumbDlg::CVxAutoSaveThumbDlg(const CVxStringW& autoSaveFile, QWidget* parent)
    : QDialog(parent, Qt::Tool | Qt::WindowStaysOnTopHint)
{
    setWindowTitle(QStringLiteral("Plaveno"));
    auto* layout = new QVBoxLayout(this);
    m_picture = new QLabel(this);
    m_picture->setMinimumSize(256, 256);
    m_picture->setAlignment(Qt::AlignCenter);
    layout->addWidget(m_picture);
    m_reader = new CVxAutoSaveThumbreader(CVxAutoSave::GetThumbnailFile(autoSaveFile).ToQString(), this);
    connect(m_reader, &CVxAutoSaveThumbreader::onThumbLoaded, this, &CVxAutoSaveThumbDlg::OnThumbLoaded,
            Qt::QueuedConnection);
    m_reader->start();
}

CVxAutoSaveThumbDlg::~CVxAutoSaveThumbDlg()
{
    m_reader->wait();
}

void CVxAutoSaveThumbDlg::OnThumbLoaded(const QImage& image)
{
    m_picture->setPixmap(QPixmap::fromImage(image));
}

bool CVxAutoSaveThumbDlg::CheckForAutoSave(QWidget* parent, bool atStart)
{
    const CVxStringW file = CVxUtils::InitAndGetAutoSaveCrashFile();
    if (file.IsEmpty())
        return false;
    bool recovered = false;
    {
        CVxAutoSaveThumbDlg picture(file, parent);
        picture.show();
        if (parent)
            picture.move(parent->geometry().topLeft() + QPoint(40, 40));
        recovered = VX_GetAutoSave()->AskAndRecover(file, atStart);
    }
    if (!recovered)
        return false;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    VX_GetCore()->RebuildRoom();
    host->EnableFloorButtons();
    host->EnableUndoButtons();
    host->AfterSelectionChanged();
    host->BuildLayersSubMenu(false);
    host->RefreshMainViewCaption();
    host->UpdateProjectUI(true, true);
    return true;
}
