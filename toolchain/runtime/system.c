/*
 * What the C library asks of the system below it: memory for the formatting of
 * fractions, used only while the tasks are locked out, and a way to give up.
 */

#include <errno.h>
#include <stddef.h>
#include <stdint.h>

#include "board.h"

#define HEAP_BYTES 4096

void *_sbrk(ptrdiff_t increment);
void abort(void) __attribute__((noreturn));
void __assert_func(const char *file, int line, const char *function, const char *text)
	__attribute__((noreturn));

void *_sbrk(ptrdiff_t increment)
{
	static char heap[HEAP_BYTES] __attribute__((aligned(8)));
	static ptrdiff_t used;
	char *start = heap + used;

	if (used + increment < 0 || used + increment > HEAP_BYTES) {
		errno = ENOMEM;
		return (void *)-1;
	}
	used += increment;
	return start;
}

void abort(void)
{
	board_stop(BOARD_CRASHED, (uint32_t)(uintptr_t)__builtin_return_address(0));
}

/* Stands in for that of the library, which would bring all its files along. */
void __assert_func(const char *file, int line, const char *function, const char *text)
{
	(void)file;
	(void)line;
	(void)function;
	(void)text;
	abort();
}
