#include "project/projectreader.h"

#include "base/tilerlog.h"

#include <QDebug>
#include <QDomDocument>
#include <QSet>
#include <QXmlDefaultHandler>
#include <QXmlInputSource>
#include <QXmlSimpleReader>

namespace
{
/**
 * How often the text of a document that declares entities may refer to any. Qt refuses an entity
 * that grows beyond 4,096 characters, but not its repetition.
 */
const int s_maximalReferences = 1000;

/**
 * Passes everything on to the document's own handlers, but counts how deep the elements go and
 * refuses entities that could multiply.
 */
class DocumentGuard : public QXmlDefaultHandler
{
public:
    explicit DocumentGuard(int p_references) : m_references(p_references) {}
    void setHandler(QXmlContentHandler* p_handler) { m_handler = p_handler; }
    void setHandler(QXmlDeclHandler* p_handler) { m_declarations = p_handler; }

    bool attributeDecl(const QString& p_element, const QString& p_attribute, const QString& p_type,
                       const QString& p_default, const QString& p_value) override
    {
        return m_declarations->attributeDecl(p_element, p_attribute, p_type, p_default, p_value);
    }
    bool internalEntityDecl(const QString& p_name, const QString& p_value) override
    {
        m_declared.insert(p_name);
        return m_references <= s_maximalReferences &&
               m_declarations->internalEntityDecl(p_name, p_value);
    }
    bool externalEntityDecl(const QString& p_name, const QString& p_publicId,
                            const QString& p_systemId) override
    {
        m_declared.insert(p_name);
        return m_declarations->externalEntityDecl(p_name, p_publicId, p_systemId);
    }

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
    bool skippedEntity(const QString& p_name) override
    {
        // The parser would leave out what nobody has declared without a word.
        return m_declared.contains(p_name) && m_handler->skippedEntity(p_name);
    }
    QString errorString() const override { return m_handler->errorString(); }

private:
    QXmlContentHandler* m_handler = nullptr;
    QXmlDeclHandler* m_declarations = nullptr;
    QSet<QString> m_declared;
    int m_references;
    int m_depth = 0;
};

/** The reader that a document parses itself with, with the guard in between. */
class GuardedReader : public QXmlSimpleReader
{
public:
    explicit GuardedReader(int p_references) : m_guard(p_references)
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
    void setDeclHandler(QXmlDeclHandler* p_handler) override
    {
        m_guard.setHandler(p_handler);
        QXmlSimpleReader::setDeclHandler(&m_guard);
    }

private:
    DocumentGuard m_guard;
};
bool parse(QXmlInputSource& p_source, int p_references, QDomDocument& p_document)
{
    GuardedReader reader(p_references);
    QString message;
    if (!p_document.setContent(&p_source, &reader, &message)) {
        qCDebug(tilerLog) << message;
        return false;
    }
    return true;
}
} // namespace

bool parseProject(const QByteArray& p_text, QDomDocument& p_document)
{
    QXmlInputSource source;
    source.setData(p_text);
    // By bytes, so in every encoding these are no less than there are.
    return parse(source, p_text.count('&') + p_text.count('%'), p_document);
}

bool parseProject(const QString& p_text, QDomDocument& p_document)
{
    QXmlInputSource source;
    source.setData(p_text);
    return parse(source, p_text.count(QLatin1Char('&')) + p_text.count(QLatin1Char('%')),
                 p_document);
}
