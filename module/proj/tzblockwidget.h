#pragma once

#include "modules/catalogue/choosers.h"
#include "proj/tzlabel.h"

#include <QList>
#include <QMap>
#include <QPointer>
#include <QSize>
#include <QStringList>
#include <QWidget>

#include <cstdint>

class BinOverlay;
class PaletteBar;
class PanelBase;
class QScrollArea;
class RowPanel;

/** The size of the palette's tabs and the gap between two of them, in pixels. */
struct TabGeometry {
    int width;
    int height;
    int spacing;
};

/** The tabs' size on a screen with so much room: 90 to 180 by 32 to 64, 5 to 10 apart. */
TabGeometry tabGeometryFor(const QSize& p_available);

/**
 * The palette along the window's bottom: four tabs, a bar in the category's colour and a strip of
 * blocks to drag onto the canvas. The strip gives way to a chooser while a block's value is being
 * edited, and lies under a bin while a block is dragged back.
 */
class TzBlockWidget : public QWidget
{
    Q_OBJECT

public:
    /**
     * p_central is the window's central widget, or another ancestor of the palette's: the tabs are
     * its children, so that they can stand on the palette's upper edge. They go with whichever of
     * it and the palette goes first.
     */
    TzBlockWidget(QWidget* p_central, QWidget* p_parent);
    ~TzBlockWidget() override;

    /** The category on show, or the one to come back to after a chooser. */
    int currentCategory() const { return m_currentCategory; }
    /** Whether a chooser stands in place of the blocks. */
    bool isChoosing() const { return m_choosing; }
    /** 1 after a drag that ended over the palette, until the next press or drag's end; else 0. */
    int dragIntoBin() const { return m_dragIntoBin; }
    /** The strip or chooser on show; null after a request for a chooser that doesn't exist. */
    PanelBase* panel() const { return m_panel; }
    /** The tabs from left to right. A tab that the central widget took with it is null. */
    const QList<QPointer<tzlabel>>& folders() const { return m_folders; }

    /** The pictures of the voice choosers; the key tells which chooser. */
    static const QMap<int, QStringList>& voicePictures();
    /** The pictures of the expression choosers; the key tells which chooser. */
    static const QMap<int, QStringList>& expressionPictures();

signals:
    /** Meant: never raised, like NewTaskSignal(): the palette has no control for it. */
    void NewProgramSignal();
    void NewTaskSignal();
    /** A chooser's button was pressed: a Qt::Key code, or the button's place, from 0. */
    void SelectNumberSignal(int n);
    /** A value was chosen for the parameter that the chooser was opened for. */
    void editParamSignal(int p_paramId, int p_value);
    /** Asks for a repaint of the canvas. */
    void updateViewSignal();

public slots:
    /** Takes a MouseState of the canvas. The same state a second time is ignored. */
    void OnProgramMouse(int p_type);
    /** Shows the number keyboard; the option's bits are those of KeyboardOption. */
    void OnShowNumKeyboardSignal(uint32_t p_numberOption);
    /** Shows the chooser of a SoundSet; an unknown one gives an empty one. */
    void OnShowVoiceSignal(int n);
    /** Shows the chooser of a SymbolSet; an unknown one gives an empty one. */
    void OnShowExpressionSignal(int n);
    void onFolderRelease();
    /**
     * Shows the panel of a PanelType: notes or servo ids. Any other type leaves the strip empty. A
     * servo id comes back through editParamSignal() with p_paramId.
     */
    void onShowPanelSignal(int p_panelType, int p_paramId);
    void onServoIdParamEdited(int p_Index);

protected:
    void moveEvent(QMoveEvent* p_event) override;
    void resizeEvent(QResizeEvent* p_event) override;
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;
    void paintEvent(QPaintEvent* p_event) override;

private:
    Q_DISABLE_COPY(TzBlockWidget)

    void createFolders();
    void placeFolders();
    void colourBar(int p_category);
    void showBlocks();
    void removePanel();
    /** Puts a chooser of pictures in the strip. */
    void showIcons(ChooserKind p_kind, int p_number);
    /** Puts a chooser, or nothing, in the strip and sends its choices to p_receiver. */
    void showChooser(RowPanel* p_panel, void (TzBlockWidget::*p_receiver)(int));
    void endDrag(int p_dragIntoBin);

    QPointer<QWidget> m_central;
    int m_currentCategory;
    QList<QPointer<tzlabel>> m_folders;
    QPointer<tzlabel> m_currentFolder;
    BinOverlay* m_overlay;
    QScrollArea* m_scrollArea;
    PanelBase* m_panel = nullptr;
    int m_panelParamId = 0;
    bool m_choosing = false;
    PaletteBar* m_topBar;
    int m_dragIntoBin = 0;
    int m_lastMouseType;
};
