#pragma once

/**
 * A program slot: the block type of its root. 0 is the main program, 404 to 433 are the thirty
 * sub-programs. Registered with the meta-type system under its name by the entry.
 */
using modulesId = int;
