#pragma once

#include <QString>

/**
 * The name of a function from its full signature, as compilers write it in Q_FUNC_INFO, with its
 * classes and namespaces but without return type, arguments and templates:
 * "virtual void Tree<int>::insert(const int&) const" gives "Tree::insert". A lambda is "<lambda>"
 * behind the function it stands in, and an operator keeps its sign. Empty for a null signature.
 */
QString shortFunctionName(const char* p_signature);
