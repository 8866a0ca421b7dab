#pragma once

#include <QtGlobal>

/**
 * Leads the messages of Qt's own functions (qDebug() and its kin) into the Logger while it lives.
 * Behind qFatal() Qt ends the program as ever, once the message is written.
 */
class MessageRoute
{
public:
    MessageRoute();
    /** Puts the former handler back, unless someone has put yet another one in place. */
    ~MessageRoute();

private:
    Q_DISABLE_COPY(MessageRoute)

    QtMessageHandler m_before;
};
