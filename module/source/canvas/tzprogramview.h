#pragma once

#include "canvas/blockclipboard.h"
#include "canvas/canvasbackground.h"
#include "canvas/canvasdrop.h"
#include "canvas/canvasmenu.h"
#include "canvas/canvaszoom.h"
#include "canvas/linkpreview.h"
#include "canvas/mousedrag.h"
#include "canvas/wheelstrip.h"
#include "document/document.h"
#include "generator/codegenerator.h"
#include "modules/modulehost.h"

#include <QGraphicsView>

#include <functional>

/**
 * The flow-chart canvas: shows the blocks of one program slot of a document, receives the events of
 * mouse, keys and wheel, and passes them to the gestures. Publishes itself as programView, and as
 * the blocks' ModuleHost, for as long as it lives.
 */
class TzProgramView : public QGraphicsView, public ModuleHost
{
    Q_OBJECT

public:
    /** The document must outlive the view. */
    explicit TzProgramView(Document& p_document, QWidget* p_parent = nullptr);
    ~TzProgramView() override;
    Q_DISABLE_COPY(TzProgramView)

    Document& document() const { return m_document; }
    /** What runs the build of a program: gets its name, the number of its tasks and its C text. */
    using BuildRunner = std::function<void(const QString&, int, const QString&)>;
    void setBuildRunner(BuildRunner p_runner) { m_buildRunner = std::move(p_runner); }
    /** The menu of a right press. */
    QMenu& contextMenu() { return m_menu; }

    /** The text for the code pane: 1 C, 2 Python; empty for any other language. */
    QString generateVisibleCode(int type) const { return ::generateVisibleCode(type); }
    QString generateProjectCode(int type) const { return ::generateProjectCode(type); }

    // The document's own operations under their names on the canvas.
    bool saveFile(const QString& p_path, const QByteArray& p_tail = QByteArray())
    {
        return m_document.save(p_path, p_tail);
    }
    bool saveTempFile(const QString& p_path, const QByteArray& p_tail = QByteArray())
    {
        return m_document.saveTemporary(p_path, p_tail);
    }
    /**
     * Opens a project: a ProjectResult. A missing file raises the question whether it leaves the
     * recent list.
     */
    int openFile(const QString& p_path);
    void newProgram() { m_document.newProgram(); }
    void resetDocument() { m_document.reset(); }
    void removeModule(supermodule* p_module) { m_document.removeModule(p_module); }
    void updateSubProgramName(int id, const QString& name)
    {
        m_document.setSubProgramName(id, name);
    }
    QUndoStack& undoStack() { return m_document.undoStack(); }
    mainModule* mainBlock() const { return m_document.mainBlock(); }

    /**
     * Deletes a block through the undo stack; null and the main block are ignored. A block that is
     * being dragged comes back to where it was pressed, any other to where it is.
     */
    void deleteModule(supermodule* p_module) { m_drag.deleteModule(p_module); }
    /** Adds a block of a type through the undo stack, its top edge's middle at a scene point. */
    void addModule(int x, int y, int id);
    /** Links a block at a place, or where the preview is for a null target; false for no place. */
    bool moduleDrop(supermodule* p_module, supermodule* p_target, int p_type)
    {
        return m_preview.link(p_module, p_target, p_type);
    }

    /** User's zoom factor, 0.5 to 2.0 in exact tenths; drawn is this plus zoomBase(). */
    double zoomFactor() const { return m_zoom.factor(); }
    static double zoomBase() { return CanvasZoom::base(); }
    FeedbackModule* preview() const { return m_preview.block(); }
    /** The block of the last press, or that of a drag from the palette. */
    supermodule* currentModule() const { return m_current; }

    // What a block asks for goes to the palette, as a signal; what it tells is a change of content.
    void raiseNumKeyboard(uint32_t p_numberOption) override
    {
        emit showNumKeyboardSignal(p_numberOption);
    }
    void raiseVoice(int p_map) override { emit showVoiceSignal(p_map); }
    void raiseExpression(int p_map) override { emit showExpressionSignal(p_map); }
    void raisePanel(int p_panelType, int p_paramId) override
    {
        emit showPanelSignal(p_panelType, p_paramId);
    }
    void noteParameter() override { m_document.noteContent(); }

signals:
    void mouseSignal(int type);
    /** The content of the slot that is shown has changed. */
    void moduleUpdateSignal();
    void updateRecentMenuSignal();
    void showNumKeyboardSignal(uint32_t p_numberOption);
    void showVoiceSignal(int n);
    void showExpressionSignal(int n);
    void showPanelSignal(int p_panelType, int p_paramId);
    /** A project file was dropped on the canvas. */
    void openPathSignal(const QString& p_path);

public slots:
    /** Meant: without effect, like OnNewTask(); the design has no way to add programs. */
    void OnNewSub() {}
    void OnDelSub();
    void OnSwitchProgram(modulesId id) { m_document.showSlot(id); }
    void OnNewTask() {}
    /** Generates the C text of the project and runs the build under a name. */
    void OnDownload(const QString& name);
    void OnCopy();
    void OnPaste();
    void OnCopyAndPaste();
    void OnUndoCopy() { m_clipboard.undoCopy(); }
    void OnClipboardChanged(QClipboard::Mode p_mode) { m_clipboard.OnClipboardChanged(p_mode); }
    void OnDelItem() { deleteModule(m_current); }
    void OnSelectNumberSignal(int n) { giveNumberKey(n); }
    void onEditParamSignal(int p_paramId, int p_value) { givePanelValue(p_paramId, p_value); }
    void onWheelReactAreaHide() { m_wheelStrip.hide(); }
    /** 0 resets the zoom and centres the main block; else |scale| tenths up or down. */
    void zoomView(int scale);

protected:
    bool event(QEvent* p_event) override;
    bool viewportEvent(QEvent* p_event) override;
    void paintEvent(QPaintEvent* p_event) override;
    void resizeEvent(QResizeEvent* p_event) override;
    void showEvent(QShowEvent* p_event) override;
    void wheelEvent(QWheelEvent* p_event) override;
    void keyPressEvent(QKeyEvent* p_event) override;
    void mousePressEvent(QMouseEvent* p_event) override;
    void mouseMoveEvent(QMouseEvent* p_event) override;
    void mouseReleaseEvent(QMouseEvent* p_event) override;
    void dragEnterEvent(QDragEnterEvent* p_event) override;
    void dragMoveEvent(QDragMoveEvent* p_event) override;
    void dragLeaveEvent(QDragLeaveEvent* p_event) override;
    void dropEvent(QDropEvent* p_event) override;

private slots:
    void onDocumentChanged(const DocumentChange& p_change);

private:
    void setUpScene();
    /** Ends a drag that will get no release here: settles the block where it is. */
    void finishDrag();
    void noteSettled();

    Document& m_document;
    LinkPreview m_preview;
    MouseDrag m_drag;
    CanvasDrop m_drop;
    BlockClipboard m_clipboard;
    CanvasZoom m_zoom;
    QPointer<supermodule> m_current;
    CanvasMenu m_menu{*this};
    WheelStrip m_wheelStrip{*this};
    CanvasBackground m_background;
    BuildRunner m_buildRunner;
};

/** The one canvas; null while there is none. */
extern QPointer<TzProgramView> programView;
