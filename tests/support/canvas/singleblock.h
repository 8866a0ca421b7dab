#pragma once

#include <QDomElement>
#include <QImage>
#include <QMap>
#include <QStringList>

class QGraphicsPixmapItem;
class supermodule;

/** Attributes of a block as a project keeps them, by their names. */
using BlockAttributes = QMap<QString, QString>;

/** From a text like "port=4 bInfread=1". */
BlockAttributes parsedAttributes(const QString& p_text);
/** The same text again, in the order of the names. */
QString joinedAttributes(const BlockAttributes& p_attributes);

/** All attributes of an element. */
BlockAttributes allAttributes(const QDomElement& p_element);
/** Those of a block's element that not every block has. */
BlockAttributes ownAttributes(const QDomElement& p_element);
/** The same of a block as it would be stored now. */
BlockAttributes ownAttributes(const supermodule* p_module);

/** A block's element as it is stored, in a document of the caller's. */
QDomElement storedBlock(const supermodule* p_module, QDomDocument& p_document);
/** Loads a block from an element with these attributes alone, given like "port=4 bInfread=1". */
void loadBlock(supermodule* p_module, const QString& p_attributes);

/** A ground as large as a block of no body with its tab. */
QImage emptyGround();
/** What a block paints of itself, without its buttons, on that ground. */
QImage paintedBlock(supermodule* p_module);
