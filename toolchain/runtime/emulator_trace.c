#include "emulator_trace.h"

#include <stdarg.h>
#include <stdio.h>

#include "kernel.h"

#define TASKS 18
#define CALLS_HEARD 100
#define SUBJECTS 128

/* The values given last, to tell a change from a repetition. */
static struct {
	uint32_t key;
	uint32_t value;
} last[SUBJECTS];
static unsigned last_next;

static struct {
	uint32_t calls;
	uint32_t unheard;
} heard[TASKS];

static void (*put)(char byte);

static void put_text(const char *text)
{
	while (*text)
		put(*text++);
}

static void put_number(uint32_t number, int width, char fill)
{
	char digits[10];
	int n = 0;

	do {
		digits[n++] = (char)('0' + number % 10);
		number /= 10;
	} while (number > 0);
	for (; width > n; width--)
		put(fill);
	while (n > 0)
		put(digits[--n]);
}

static void put_time(void)
{
	uint32_t time = kernel_time();

	put('[');
	put_number(time / 1000, 4, ' ');
	put('.');
	put_number(time % 1000, 3, '0');
	put_text("] ");
}

static void put_task(int task)
{
	if (kernel_task_count() == 0 || task > kernel_task_count())
		return;
	if (task == 0) {
		put_text("main: ");
		return;
	}
	put_text("task ");
	put_number((uint32_t)task, 0, ' ');
	put_text(": ");
}

void trace_open(void (*put_byte)(char))
{
	put = put_byte;
}

uint32_t trace_hash(const void *data, uint32_t size)
{
	const uint8_t *byte = data;
	uint32_t hash = 2166136261u;

	while (size-- > 0)
		hash = (hash ^ *byte++) * 16777619u;
	return hash;
}

int trace_changed(enum trace_subject subject, int number, uint32_t value)
{
	uint32_t key = (uint32_t)subject << 27 | ((uint32_t)number & 0x7FFFFFF);
	unsigned i;

	for (i = 0; i < SUBJECTS; i++) {
		if (last[i].key == key) {
			int changed = last[i].value != value;

			last[i].value = value;
			return changed;
		}
	}
	last[last_next].key = key;
	last[last_next].value = value;
	last_next = (last_next + 1) % SUBJECTS;
	return 1;
}

int trace_heard(int changed)
{
	int task = kernel_task();

	if (heard[task].calls < CALLS_HEARD) {
		heard[task].calls++;
		return 1;
	}
	if (!changed)
		heard[task].unheard++;
	return changed;
}

void trace_text(const char *what, const char *text)
{
	put_time();
	put_task(kernel_task());
	put_text(what);
	put_text(text);
	put('\n');
}

void trace_line(const char *format, ...)
{
	/* Shared by the tasks, which is safe while they are locked out. */
	static char text[128];
	va_list arguments;

	va_start(arguments, format);
	vsnprintf(text, sizeof(text), format, arguments);
	va_end(arguments);
	trace_text("", text);
}

static void put_row(uint8_t row)
{
	int i;

	for (i = 7; i >= 0; i--)
		put(row >> i & 1 ? '#' : '.');
}

void trace_rows(const uint8_t *left, const uint8_t *right)
{
	int i;

	for (i = 0; i < 8; i++) {
		put_text("           ");
		put_row(left[i]);
		if (right) {
			put_text("  ");
			put_row(right[i]);
		}
		put('\n');
	}
}

/* Says how many calls of a task were passed over. */
static void put_unheard(int task)
{
	if (heard[task].unheard == 0)
		return;
	put_time();
	put_task(task);
	put_number(heard[task].unheard, 0, ' ');
	put_text(" repeated calls not shown\n");
	heard[task].unheard = 0;
}

void trace_waited(void)
{
	int task = kernel_task();

	put_unheard(task);
	heard[task].calls = 0;
}

void trace_task_finished(void)
{
	put_unheard(kernel_task());
	if (kernel_task_count() > 0)
		trace_text("", "finished");
}

void trace_end(const char *text, const uint32_t *address)
{
	int i;

	for (i = 0; i < TASKS; i++)
		put_unheard(i);
	put_time();
	put_text(text);
	if (address) {
		put_text(" at 0x");
		for (i = 28; i >= 0; i -= 4)
			put("0123456789abcdef"[*address >> i & 15]);
	}
	put('\n');
}
