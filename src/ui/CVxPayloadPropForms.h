#pragma once
// The forms of the objects that carry a payload: stairs, stairs with round
// treads and the sliding wardrobe. Each works on one part: a control's
// change goes to the part's payload at once and the preview redraws; Cancel
// puts the payload back as it was.

#include <QDialog>
#include <QWidget>

#include <functional>
#include <memory>

class CVxAppearanceButton;
class CVxPart;
class CVxPartPayload;
class QComboBox;
class QDoubleSpinBox;
class QHBoxLayout;
class QLabel;
class QSpinBox;

// Keeps a form and its part in step: the payload as it was, for Cancel.
class CVxObjPropSync
{
public:
    explicit CVxObjPropSync(CVxPart& part);
    ~CVxObjPropSync();
    CVxPart& GetPart() const { return m_part; }
    // The part's payload as the type T, or null.
    template <class T>
    T* Get() const;
    // Back as it was when the form opened.
    void Restore();

private:
    CVxPart& m_part;
    std::unique_ptr<CVxPartPayload> m_original;
};

// Draws the payload's preview of a part; a click reports where, in
// fractions of the picture.
class CVxPayloadPreview : public QWidget
{
    Q_OBJECT
public:
    CVxPayloadPreview(CVxPart& part, QWidget* parent = nullptr);
    // The wardrobe marks one door; -1 none.
    void SetSelection(int selected);
    QSize sizeHint() const override;

signals:
    void clicked(double x, double y);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    CVxPart& m_part;
    int m_selected = -1;
};

// Base of the three forms: the preview, OK and Cancel.
class CVxPayloadPropForm : public QDialog
{
    Q_OBJECT
public:
    void done(int result) override;
    CVxPayloadPreview* GetPreview() const { return m_preview; }

protected:
    CVxPayloadPropForm(CVxPart& part, QWidget* parent);
    // Lays out the fields beside the preview, with the buttons below.
    void Finish(QLayout* fields);
    // After every change: the preview and the texts that follow the values.
    virtual void Changed();

    CVxObjPropSync m_sync;
    CVxPayloadPreview* m_preview = nullptr;
    bool m_ready = false;
};

class CVxObjStairsPropForm : public CVxPayloadPropForm
{
    Q_OBJECT
public:
    CVxObjStairsPropForm(CVxPart& part, int unit, QWidget* parent = nullptr);
    QSpinBox* GetStepsSpin() const { return m_steps; }

protected:
    void Changed() override;

private:
    int m_unit;
    QSpinBox* m_steps = nullptr;
    QLabel* m_measures = nullptr;
};

class CVxObjBanStairsPropForm : public CVxPayloadPropForm
{
    Q_OBJECT
public:
    CVxObjBanStairsPropForm(CVxPart& part, int unit, QWidget* parent = nullptr);
    QSpinBox* GetStepsSpin() const { return m_steps; }
    QSpinBox* GetThicknessSpin() const { return m_thickness; }

protected:
    void Changed() override;

private:
    int m_unit;
    QSpinBox* m_steps = nullptr;
    QSpinBox* m_thickness = nullptr;
    QLabel* m_measures = nullptr;
};

class CVxDozWardrobePropForm : public CVxPayloadPropForm
{
    Q_OBJECT
public:
    CVxDozWardrobePropForm(CVxPart& part, QWidget* parent = nullptr);
    QSpinBox* GetDoorsSpin() const { return m_doors; }
    QSpinBox* GetPanelsSpin() const { return m_panels; }
    QComboBox* GetDoorCombo() const { return m_door; }
    QComboBox* GetInteriorCombo() const { return m_interior; }

private:
    void Rebuild();
    void ShowDoor();
    void OnCountsChanged();
    void OnInteriorChanged();
    void OnPanelPicked(int panel);

    QSpinBox* m_doors = nullptr;
    QSpinBox* m_panels = nullptr;
    QComboBox* m_door = nullptr;
    QComboBox* m_interior = nullptr;
    QHBoxLayout* m_panelRow = nullptr;
    QWidget* m_panelBox = nullptr;
};

// The form of the part's payload, or null for a part without one.
std::unique_ptr<CVxPayloadPropForm> VX_CreatePayloadPropForm(CVxPart& part, int unit, QWidget* parent);
