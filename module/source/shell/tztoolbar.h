#pragma once

#include "document/modulesid.h"
#include "project/programnameholder.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QWidget>

class QHBoxLayout;
class QPushButton;

/**
 * The strip along the window's top: buttons, three drop-down menus, the program's name and room for
 * notices. It keeps no state but the name; whoever wants its clicks connects to its signals. Only
 * the name field takes the keyboard's focus.
 */
class TzToolBar : public QWidget, public ProgramNameHolder
{
    Q_OBJECT

public:
    explicit TzToolBar(QWidget* p_parent = nullptr);
    ~TzToolBar() override;

    QString programName() const override;
    void setProgramName(const QString& p_name) override;

    /** The recent projects, behind a button that is grey while there are none. */
    QMenu& recentMenu() { return m_recentMenu; }
    /** Tells whether the C text is shown: its button stays down meanwhile. */
    void setCodeShown(bool p_shown);

    /** Appends a notice with a button that starts the controller's firmware update. */
    void addInfo(const QString& p_text);
    /** Brings back the notice about newer firmware if that was found today. */
    void checkFirmwareNotice();
    /** Shows the notice about newer firmware, and this one alone, and notes the day. */
    void showFirmwareNotice();

signals:
    void newFileSignal();
    /** 1 in, -1 out, 0 back to the plain size. */
    void zoomSceneSignal(int);
    void newSubSignal();
    void delSubSignal();
    void switchSubProgram(modulesId);
    /** The name is as it stands in the field; it may be empty. */
    void downloadSignal(QString name);
    void saveSignal();
    void openFileSignal();
    void saveAsSignal();
    /** 1 C, 2 Python. */
    void showCodeSignal(int type);
    void chgToCodeSignal();
    void chgToPyhtonSignal();
    /** Meant: no control raises it; the window opens the action editor by it. */
    void chgToEditActionsSignal();
    /** The full path of a recent project. */
    void openRecentFileSignal(QString name);
    void appUpgradeSignal();
    /** Return or Escape in the name field: the keys may go back to where they came from. */
    void nameDoneSignal();

public slots:
    // Meant: some of these have no control; docs/kept-without-a-caller.md lists them.
    void OnNew();
    void OnOpen();
    void OnSave();
    void OnSaveAs();
    void OnExample();
    void OnRecent();
    /** Ends the program without asking. */
    void OnQuit();
    void OnMain();
    void OnNewSub();
    void OnDeleteSub();
    void OnShowCode();
    void OnEditCode();
    void OnShowPythonCode();
    void OnEditPython();
    /** Asks for a smaller scene. Meant: the name runs against the button; see OnZoomOut(). */
    void OnZoomIn();
    /** Asks for a larger scene. Meant: the name runs against the button; connections go by it. */
    void OnZoomOut();
    void OnZoomNormal();
    void OnDownload();
    void OnToSketchpad();
    void OnMore();
    void OnAbout();
    void OnUpdateFunMenu();
    /** Switches to the slot that the sending action carries. */
    void OnSwitchSubProgram();
    /** Updates the controller's firmware; returns when that is over. */
    void OnControlUpdate();
    /** Opens the path that the sending action carries. */
    void OnRecentFile();
    /** Fills the recent menu anew with the first of the recent projects, 11 at most. */
    void OnUpdateRecentMenuSignal();
    void onControllerType();
    /** Takes all notices away. */
    void removeInfo();
    void onInfoButtonClicked();

protected:
    void keyPressEvent(QKeyEvent* p_event) override;
    void resizeEvent(QResizeEvent* p_event) override;

private:
    Q_DISABLE_COPY(TzToolBar)

    QPushButton* createToolButton();
    /** A tool button with the pictures that a style sheet tells. */
    QPushButton* createPictureButton(const QString& p_style, const QString& p_toolTip);
    void createFileButton();
    void createZoomButtons();
    void createDownloadButton();
    void setUpNameField();
    void createRecentButton();
    void createCodeButton();
    void createMoreButton();
    /** Breaks the texts of the notices into two lines where there is no room for one. */
    void fitNotices();

    QMenu m_fileMenu;
    QMenu m_moreMenu;
    QLabel m_nameLabel;
    QLineEdit m_nameEdit;
    QMenu m_recentMenu;
    QPushButton* m_fileButton = nullptr;
    QPushButton* m_zoomInButton = nullptr;
    QPushButton* m_zoomNormalButton = nullptr;
    QPushButton* m_zoomOutButton = nullptr;
    QPushButton* m_downloadButton = nullptr;
    QPushButton* m_recentButton = nullptr;
    QPushButton* m_codeButton = nullptr;
    QPushButton* m_moreButton = nullptr;
    QHBoxLayout* m_infoLayout = nullptr;
};

/** The one tool bar; null before there is one and after it is gone. */
extern TzToolBar* toolBarInstance;
