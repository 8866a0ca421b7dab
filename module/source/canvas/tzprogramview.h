#pragma once

#include "canvas/linkcandidates.h"
#include "canvas/moduleplace.h"
#include "canvas/modulesid.h"
#include "modules/modulehost.h"
#include "modules/mousestate.h"

#include <QClipboard>
#include <QGraphicsView>
#include <QMenu>
#include <QPixmap>
#include <QPointer>
#include <QTimer>
#include <QUndoStack>

#include <functional>

class FeedbackModule;
class mainModule;
class ProgramNameHolder;
class supermodule;
class tzprogramscene;

/**
 * The flow-chart canvas: shows the blocks of one program slot and handles mouse, keys, drops,
 * undo, clipboard and project files. It owns the document's blocks and publishes itself as
 * programView, and as the blocks' ModuleHost, for as long as it lives.
 */
class TzProgramView : public QGraphicsView, public ModuleHost
{
    Q_OBJECT

public:
    explicit TzProgramView(QWidget* p_parent = nullptr);
    ~TzProgramView() override;
    Q_DISABLE_COPY(TzProgramView)

    // Wiring.
    /** Where the program's name of a project file stands; null: files carry none. Not owned. */
    void setProgramNameHolder(ProgramNameHolder* p_holder) { m_nameHolder = p_holder; }
    /** What runs the build once the source is written: gets the name and the number of tasks. */
    void setBuildRunner(std::function<void(const QString&, int)> p_runner)
    {
        m_buildRunner = std::move(p_runner);
    }
    /** The menu of a right press. */
    QMenu& contextMenu() { return m_menu; }

    // Text.
    /** The text for the code pane: 1 C, 2 Python; empty for any other language. */
    QString generateVisibleCode(int type) const;
    QString generateProjectCode(int type) const;

    // Document.
    /**
     * Saves the project with p_tail behind its XML, and puts it first in the recent list. False
     * if it couldn't be written; the old file is then as writeProject() leaves it.
     */
    bool saveFile(const QString& p_path, const QByteArray& p_tail = QByteArray());
    /** The save of temp.tlrx: blocks without parent alone, and no entry in the recent list. */
    bool saveTempFile(const QString& p_path, const QByteArray& p_tail = QByteArray());
    /**
     * Opens a project: a ProjectResult. With any result but 0 the canvas holds what it held. A
     * missing file raises the question whether it leaves the recent list.
     */
    int openFile(const QString& p_path);
    /** Deletes all blocks but the main block, and what follows that. */
    void newProgram();
    /** Forgets undo history, keys and roots; the main block is the one root again. */
    void resetDocument();

    // Operations that commands carry out.
    /** Deletes a block and all under it, for good; null is ignored. */
    void removeModule(supermodule* p_module);
    /** Deletes a block through the undo stack; null and the main block are ignored. */
    void deleteModule(supermodule* p_module);
    /** Adds a block of a type through the undo stack, its top edge's middle at a scene point. */
    void addModule(int x, int y, int id);
    /** Links a block at a place, or at the best candidate for a null target. */
    bool moduleDrop(supermodule* p_module, supermodule* p_target, int p_type);
    /** Shows a name as that of a sub-program, in the list of names and on its blocks. */
    void updateSubProgramName(int id, const QString& name);

    /** User's zoom factor, 0.5 to 2.0 in exact tenths; drawn is this plus zoomBase(). */
    double zoomFactor() const { return m_zoom; }
    static double zoomBase();
    QUndoStack& undoStack() { return m_undoStack; }
    mainModule* mainBlock() const { return m_mainModule; }
    FeedbackModule* preview() const { return m_feedback; }
    supermodule* currentModule() const { return m_current; }

    void raiseNumKeyboard(uint32_t p_numberOption) override;
    void raiseVoice(int p_map) override;
    void raiseExpression(int p_map) override;
    void raisePanel(int p_panelType, int p_paramId) override;

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
    /** Deliberately without effect, like OnNewTask(). */
    void OnNewSub() {}
    void OnDelSub();
    void OnSwitchProgram(modulesId id);
    void OnNewTask() {}
    /** Writes the C text of the project and runs the build under a name. */
    void OnDownload(const QString& name);
    void OnCopy();
    void OnPaste();
    void OnCopyAndPaste();
    void OnUndoCopy();
    void OnClipboardChanged(QClipboard::Mode p_mode);
    void OnDelItem();
    void OnSelectNumberSignal(int n);
    void onEditParamSignal(int p_paramId, int p_value);
    void onWheelReactAreaHide();
    /** 0 resets the zoom and centres the main block; else |scale| tenths up or down. */
    void zoomView(int scale);

protected:
    bool viewportEvent(QEvent* p_event) override;
    void resizeEvent(QResizeEvent* p_event) override;
    void wheelEvent(QWheelEvent* p_event) override;
    void keyPressEvent(QKeyEvent* p_event) override;
    void mousePressEvent(QMouseEvent* p_event) override;
    void mouseMoveEvent(QMouseEvent* p_event) override;
    void mouseReleaseEvent(QMouseEvent* p_event) override;
    void dragEnterEvent(QDragEnterEvent* p_event) override;
    void dragMoveEvent(QDragMoveEvent* p_event) override;
    void dragLeaveEvent(QDragLeaveEvent* p_event) override;
    void dropEvent(QDropEvent* p_event) override;

private:
    void setUpScene();
    void setUpMenu();
    void scaleBackground(Qt::AspectRatioMode p_mode);
    void centreLogo();
    void applyZoom(double p_factor);
    QList<supermodule*> storedRoots() const;

    // Gestures.
    supermodule* moduleAt(const QList<QGraphicsItem*>& p_items, qreal p_sceneX) const;
    void showContextMenu(const QPoint& p_globalPos);
    bool lowerEdgeIsOut(const supermodule* p_module) const;
    void previewBestCandidate(supermodule* p_module);
    void showFeedback(supermodule* p_target, int p_type);
    void hideFeedback();
    void settle(supermodule* p_module);
    void finishDrag();
    void dropUnfinished();
    void dropUrls(const QMimeData* p_data);

    void pasteAt(int x, int y);
    bool hasClipboardBlocks() const;
    void askForMissing(const QString& p_path);

    tzprogramscene* m_scene = nullptr;
    mainModule* m_mainModule = nullptr;
    bool m_pressed = false;
    QPointer<supermodule> m_current;
    QPointer<supermodule> m_copied;
    /** The hidden block of a drag from the palette, until it is dropped. */
    QPointer<supermodule> m_incoming;
    QMenu m_menu;
    QPointF m_lastScenePos;
    QPointF m_pressPos;
    /** Where the block of the press was then. */
    ModulePlace m_pressPlace;
    QAction* m_actCopy = nullptr;
    QAction* m_actPaste = nullptr;
    QAction* m_actCopyAndPaste = nullptr;
    QAction* m_actUndoCopy = nullptr;
    QAction* m_actDelete = nullptr;
    QAction* m_actUndo = nullptr;
    QAction* m_actRedo = nullptr;
    bool m_ownClipboardChange = false;
    QWidget* m_wheelReactArea = nullptr;
    QTimer* m_wheelReactTimer = nullptr;
    QUndoStack m_undoStack;
    QList<LinkCandidate> m_linkCandidates;
    FeedbackModule* m_feedback = nullptr;
    QPointer<supermodule> m_target;
    int m_type = NoLink;
    int m_distance = 10000; /**< of the candidate that the preview shows */
    double m_zoom = 1.0;

    QPixmap m_backgroundPicture;
    ProgramNameHolder* m_nameHolder = nullptr;
    std::function<void(const QString&, int)> m_buildRunner;
};

/** The one canvas; null while there is none. */
extern QPointer<TzProgramView> programView;
