#pragma once
// The colour and texture picker of a surface: the colour catalogues with a
// search over names and codes, the colours used last, a colour typed as hex
// or NCS, a picture as texture, and the transparency.

#include "CVxAppearance.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QSpinBox;
class QHBoxLayout;

class CVxColorPickerDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CVxColorPickerDlg(const CVxAppearance& start, QWidget* parent = nullptr);
    const CVxAppearance& GetAppearance() const { return m_appearance; }
    // What the user typed or clicked, as the widgets do it.
    void SetColor(unsigned colour);
    void SetTexture(const CVxStringW& path);

    void accept() override;

private:
    void FillSwatchList();
    void FillRecent();
    void UpdatePreview();
    void OnHexEdited();
    void OnNcsEdited();
    void OnBrowseTexture();

    CVxAppearance m_appearance;
    QComboBox* m_swatches = nullptr;
    QLineEdit* m_search = nullptr;
    QListWidget* m_list = nullptr;
    QHBoxLayout* m_recentRow = nullptr;
    QLabel* m_preview = nullptr;
    // Code and name of the catalogue colour picked last.
    QLabel* m_swatchName = nullptr;
    QLineEdit* m_hex = nullptr;
    QLineEdit* m_ncs = nullptr;
    QLineEdit* m_texture = nullptr;
    QSpinBox* m_transparency = nullptr;
};
