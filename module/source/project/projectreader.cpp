#include "projectreader.h"

#include "tilerlog.h"

#include <QDebug>
#include <QDomDocument>
#include <QXmlDefaultHandler>
#include <QXmlInputSource>
#include <QXmlSimpleReader>

namespace
{
/** Passes everything on to the document's own handler, but counts how deep the elements go. */
class DepthGuard : public QXmlDefaultHandler
{
public:
    void setHandler(QXmlContentHandler* p_handler) { m_handler = p_handler; }

    void setDocumentLocator(QXmlLocator* p_locator) override
    {
        m_handler->setDocumentLocator(p_locator);
    }
    bool startDocument() override
    {
        m_depth = 0;
        return m_handler->startDocument();
    }
    bool endDocument() override { return m_handler->endDocument(); }
    bool startPrefixMapping(const QString& p_prefix, const QString& p_uri) override
    {
        return m_handler->startPrefixMapping(p_prefix, p_uri);
    }
    bool endPrefixMapping(const QString& p_prefix) override
    {
        return m_handler->endPrefixMapping(p_prefix);
    }
    bool startElement(const QString& p_uri, const QString& p_localName, const QString& p_name,
                      const QXmlAttributes& p_attributes) override
    {
        return ++m_depth <= MaximalProjectDepth &&
               m_handler->startElement(p_uri, p_localName, p_name, p_attributes);
    }
    bool endElement(const QString& p_uri, const QString& p_localName,
                    const QString& p_name) override
    {
        --m_depth;
        return m_handler->endElement(p_uri, p_localName, p_name);
    }
    bool characters(const QString& p_text) override { return m_handler->characters(p_text); }
    bool ignorableWhitespace(const QString& p_text) override
    {
        return m_handler->ignorableWhitespace(p_text);
    }
    bool processingInstruction(const QString& p_target, const QString& p_data) override
    {
        return m_handler->processingInstruction(p_target, p_data);
    }
    bool skippedEntity(const QString& p_name) override { return m_handler->skippedEntity(p_name); }
    QString errorString() const override { return m_handler->errorString(); }

private:
    QXmlContentHandler* m_handler = nullptr;
    int m_depth = 0;
};

/** The reader that a document parses itself with, with the guard in between. */
class GuardedReader : public QXmlSimpleReader
{
public:
    GuardedReader()
    {
        // As the document class sets up its own reader.
        setFeature(QStringLiteral("http://xml.org/sax/features/namespaces"), false);
        setFeature(QStringLiteral("http://xml.org/sax/features/namespace-prefixes"), true);
        setFeature(
            QStringLiteral("http://trolltech.com/xml/features/report-whitespace-only-CharData"),
            false);
    }
    void setContentHandler(QXmlContentHandler* p_handler) override
    {
        m_guard.setHandler(p_handler);
        QXmlSimpleReader::setContentHandler(&m_guard);
    }

private:
    DepthGuard m_guard;
};
} // namespace

bool parseProject(const QByteArray& p_text, QDomDocument& p_document)
{
    QXmlInputSource source;
    source.setData(p_text);
    GuardedReader reader;
    QString message;
    if (!p_document.setContent(&source, &reader, &message)) {
        qCDebug(tilerLog) << message;
        return false;
    }
    return true;
}
