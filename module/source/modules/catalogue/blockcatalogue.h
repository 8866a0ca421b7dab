#pragma once

#include "modules/catalogue/blocktables.h"

#include <QString>

class supermodule;

/**
 * Pictures of the frame around a block that is copied, by what it goes around: the body with its
 * drawers, or a loop's bracket. Meant: no row names two of them; they are for roots of slots (types
 * 401 to 433) and values (types 200 to 215), types that files may hold.
 */
namespace copyFrames
{
constexpr char plain[] = ":/select1.png";
constexpr char root[] = ":/select2.png";
constexpr char value[] = ":/select3.png";
constexpr char loop[] = ":/select4.png";
constexpr char bare[] = ":/select5.png";
constexpr char twoDrawers[] = ":/select6.png";
constexpr char loopUntil[] = ":/select7.png";
constexpr char endlessLoop[] = ":/select8.png";
} // namespace copyFrames

/** One block type: everything that is told once about it. Types are stored in files. */
struct CatalogueRow {
    using Create = supermodule* (*)(int, const QString&, const QString&, const QString&);

    CategoryId category;
    int id;                /**< never to be renumbered */
    const char* caption;   /**< source text, translated in the context QObject */
    const char* picture;   /**< resource path */
    Create create;         /**< a new block of the type's class */
    const char* copyFrame; /**< one of copyFrames, or null for none */
};

/** All block types, in the order of the palette. */
const CatalogueRow* catalogueBegin();
const CatalogueRow* catalogueEnd();
