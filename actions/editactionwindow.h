#pragma once

#include "actions/model/actionblock.h"

#include <QMainWindow>
#include <QString>

#include <memory>

/** The editor of a project's robot actions. Owns their one image, from construction to the end. */
class editActionWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit editActionWindow(QWidget* p_parent = nullptr);
    ~editActionWindow() override;

    /** The image as it stands. */
    const ActionBlock& actionBlock() const { return *m_actionBlock; }

    /** Whether the actions have changed since they were last saved or loaded. */
    bool modified() const { return m_modified; }
    void setModified(bool p_modified) { m_modified = p_modified; }

    /**
     * Appends the image to a file, creating it if need be, and clears the modified flag. If the
     * file can't be opened nothing is done and the flag stays.
     */
    void appendActionBlock(const QString& p_path);

    /**
     * Takes the last 57,472 bytes of a file as the image and clears the modified flag. A file that
     * can't be read or is too short changes nothing; bytes with a format mark that isn't 0 reset
     * the image.
     */
    void loadActionBlock(const QString& p_path);

    /** Clears the image. The modified flag stays. */
    void resetActionBlock();

private:
    Q_DISABLE_COPY(editActionWindow)

    bool writeActionBlock(const QString& p_path) const;

    std::unique_ptr<ActionBlock> m_actionBlock;
    bool m_modified = false;
};
