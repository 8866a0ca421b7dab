#pragma once

#include "modules/supermodule.h"

/**
 * What every concrete block has in common: it belongs to a family and says in a constant `s_look`
 * in what it differs from the other blocks of that. Gives the family the constant, and the block
 * its clone(), which copies what the family's copy constructor copies.
 */
template <class Block, class Family> class concreteModule : public Family
{
public:
    using Family::Family;
    supermodule* clone() const override { return new Block(static_cast<const Block&>(*this)); }

protected:
    const typename Family::Look& look() const override { return Block::s_look; }
};
