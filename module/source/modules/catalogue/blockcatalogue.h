#pragma once

#include <QString>

class supermodule;

/** One block type: everything that is told once about it. Types are stored in files. */
struct CatalogueRow {
    using Create = supermodule* (*)(int, const QString&, const QString&, const QString&);

    int category;        /**< a category of the palette, or -1 for a block that no tab shows */
    int id;              /**< never to be renumbered */
    const char* caption; /**< source text, translated in the context QObject */
    const char* picture; /**< resource path */
    Create create;
};

/** All block types, in the order of the palette. */
const CatalogueRow* catalogueBegin();
const CatalogueRow* catalogueEnd();

/** The row of a type, or null. */
const CatalogueRow* findCatalogueRow(int p_id);
