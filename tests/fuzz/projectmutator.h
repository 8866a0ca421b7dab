#pragma once

#include <QByteArray>

/**
 * A project's text with its check tag put right, so that the reader goes on behind it. The same
 * text when that has no tag, or is no XML that could be a project.
 */
QByteArray withRightTag(const QByteArray& p_text);

/**
 * A project's text with something in its tree changed: a block taken out, doubled, hung elsewhere
 * or taken from p_donor, another project, or an attribute set to an odd value. The check tag is
 * right. The same seed gives the same change. The same text when it is no XML that could be a
 * project.
 */
QByteArray withChangedTree(const QByteArray& p_text, const QByteArray& p_donor, quint32 p_seed);
