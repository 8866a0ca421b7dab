#pragma once

#include <QVector>

class supermodule;

/**
 * The keeper of moduleMap, nextModuleKey and liveModules: it alone gives a block its registry key
 * and its place among the live ones. Interface thread only.
 */
class ModuleRegistry
{
public:
    ModuleRegistry() = delete;

    /** Registers a block under the next free key and returns that key. */
    static int add(supermodule* p_module);
    /**
     * Registers a block under a given key, in place of what stood there. A block has one key: an
     * earlier one is released. nextModuleKey stays as it is.
     */
    static void addAs(int p_key, supermodule* p_module);
    /** Empties the registry and starts again with key 1. */
    static void clear();
    /** The keys of a block and of all under it, in the order of forEachModule(). */
    static QVector<int> keysUnder(supermodule* p_module);

private:
    friend class supermodule;

    /** Puts a new block into liveModules. */
    static void remember(supermodule* p_module);
    /**
     * Removes a block that is being destroyed from the registry, liveModules and the lists of
     * roots.
     */
    static void forget(supermodule* p_module);
};
