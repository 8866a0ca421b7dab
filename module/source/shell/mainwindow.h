#pragma once

#include "canvas/tzprogramview.h"

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

class CodePane;
class editActionWindow;
class QSplitter;
class QTextBrowser;
class TzBlockWidget;
class TzToolBar;
class UpgradeDialog;

/**
 * The one main window: tool bar, canvas, code pane and palette, wired to one another, and the
 * life of the document in them.
 */
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget* p_parent = nullptr);
    ~MainWindow() override;
    Q_DISABLE_COPY(MainWindow)

    TzToolBar* toolBar() const { return m_toolBar; }
    TzBlockWidget* blockWidget() const { return m_blockWidget; }
    Document& document() { return m_document; }
    TzProgramView* view() { return &m_programView; }
    QTextBrowser* codeBrowser() const { return m_codeBrowser; }
    /** The path of the open document; empty when it is new. */
    QString fileName() const { return m_fileName; }

    /**
     * Opens a project by its path, after the question about unsaved changes. A path with another
     * ending than ".tlrx", capitals included, is not opened.
     */
    void openPath(const QString& path);
    /** Appends action data and trailer to a compiled program; what can't be written is skipped. */
    void appendCompiledData(const QString& path);
    /** Shows a document's name in the title, with version and build date. */
    void setFileTitle(const QString& name);

public slots:
    void OnNewFile();
    void OnOpenFile();
    /** Saves under the document's name, asking for one if it has none: 0 when that went well. */
    int OnSaveFile();
    void OnSaveAsFile();
    /** Shows the code pane with the text of a language, or hides it when it shows that already. */
    void OnShowCode(int type);
    void OnUpdateCode();
    /** Meant: without effect, since this window has no code editor. Neither has OnEditPython(). */
    void OnEditCode() {}
    void OnEditPython() {}
    void OnEditActions();
    void onDownLoad(const QString& name);
    /** Shows the update dialog and checks again; without effect while it shows already. */
    void onAppUpgrade();
    void OnOpenRecentFileSignal(const QString& name) { openPath(name); }
    void OnAutoSaveFile();

protected:
    void closeEvent(QCloseEvent* p_event) override;

private:
    void buildWindow();
    void connectParts();
    /** Makes the update dialog, and with it all that has to do with the network. */
    void startUpdates();
    bool mayLoseDocument();
    /** Asks where to save to; empty when the user thinks better of it. */
    QString askSavePath(const QString& p_title);
    bool saveTo(const QString& p_path);
    void openProject(const QString& p_path);
    void runBuild(const QString& p_name, int p_tasks, const QString& p_source);

    TzToolBar* m_toolBar = nullptr;
    TzBlockWidget* m_blockWidget = nullptr;
    Document m_document;
    TzProgramView m_programView;
    QTextBrowser* m_codeBrowser = nullptr;
    /** Destroyed before the view and the browser. */
    std::unique_ptr<CodePane> m_codePane;
    /**
     * The action editor, made when it is first shown. Destroyed before the document with its image.
     */
    std::unique_ptr<editActionWindow> m_actionWindow;
    /** Null until shortly after the start. */
    UpgradeDialog* m_upgradeDialog = nullptr;
    QSplitter* m_splitter = nullptr;
    QString m_fileName;
    int m_codeType;
    /** Meant: connected and never started; the design has no period for it. */
    QTimer m_autoSaveTimer{this};
};

/** The one main window; null while there is none. */
extern QPointer<MainWindow> mainWindow;
