#pragma once

#include "modules/supermodule.h"

#include <QDomDocument>
#include <QList>

class ProgramNameHolder;
class QGraphicsScene;

/**
 * Keeps the order of attributes the same in every run while it lives: elements that are made
 * meanwhile don't depend on the random seed of Qt's hashes.
 */
class StableAttributeOrder
{
public:
    StableAttributeOrder();
    ~StableAttributeOrder();
    Q_DISABLE_COPY(StableAttributeOrder)

private:
    int m_seed;
};

/** How a block writes its own element. */
using SaveModule = void (supermodule::*)(QDomElement&, QDomDocument&) const;

/**
 * Appends a `module` element for each block of a chain, with `left` and `right` where it has them.
 * p_save writes each one.
 */
void writeChain(QDomElement& p_parent, QDomDocument& p_document, const supermodule* p_first,
                SaveModule p_save = &supermodule::saveXml);

/**
 * Builds one block from its `module` element, without what hangs under it: with its connectors and
 * flags, in p_scene, loaded and registered under a new key. Null for an unknown type.
 */
supermodule* buildBlock(const QDomElement& p_element, QGraphicsScene* p_scene);

/**
 * Builds the chain of a `module` element and its siblings: each block with its connectors and
 * flags, in p_scene, loaded and registered under a new key, and its bodies. Nothing is laid out.
 * Elements of unknown type are left out with what hangs under them. Null for a null element and for
 * a chain of which nothing is known.
 */
supermodule* buildChain(const QDomElement& p_first, QGraphicsScene* p_scene);

/** True if buildChain() makes a block of any chain of a project or of a clipboard's text. */
bool holdsBlocks(const QDomElement& p_project);

/**
 * The text of a project: the XML with its check tag, as it stands in the file. p_roots are the
 * blocks without parent in the order in which they are written. p_name may be null. Empty if the
 * bodies are nested so deep that the elements would go beyond MaximalProjectDepth: no reader would
 * take that text.
 */
QByteArray projectText(const QList<supermodule*>& p_roots, const ProgramNameHolder* p_name);

/** The same for temp.tlrx, which holds the blocks without parent alone, no chains, no bodies. */
QByteArray temporaryProjectText(const QList<supermodule*>& p_roots,
                                const ProgramNameHolder* p_name);

/**
 * Brings a parsed document into the form that a check tag covers: the doctype line, then the root
 * element; no declaration and nothing else around it. The root moves out of p_parsed.
 */
QDomDocument canonicalDocument(const QDomDocument& p_parsed);

/**
 * Whether the check tag of a canonical document fits its text, also where there is none. Leaves the
 * tag's value at "0".
 */
bool tagFits(QDomDocument& p_document);

/** A document's text as it stands in a file and as a check tag covers it. */
QByteArray documentText(const QDomDocument& p_document);
