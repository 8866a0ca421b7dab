/* The trace: one line for each call that a program makes. */
#ifndef EMULATOR_TRACE_H
#define EMULATOR_TRACE_H

#include <stdint.h>

/* Told where its bytes go. */
void trace_open(void (*put_byte)(char));

/* What a line is about; with the number it tells what its value belongs to. */
enum trace_subject {
	TRACE_MOTOR = 1, TRACE_SERVO, TRACE_SOUND, TRACE_DISPLAY, TRACE_PRINT,
	TRACE_WAIT, TRACE_TOUCH, TRACE_ANALOGUE
};

/*
 * A call asks whether it is to be heard, then writes its lines. No other task
 * may run meanwhile.
 */

/* Remembers the value of a subject; answers whether it is a new one. */
int trace_changed(enum trace_subject subject, int number, uint32_t value);

/*
 * Answers whether a call is to be written. A task that has made many calls
 * without a wait between is heard only when it changes something, else a loop
 * without a wait would drown everything.
 */
int trace_heard(int changed);

/* A line with time and task before it, of any length. */
void trace_text(const char *what, const char *text);

/* The same, formatted, of up to 127 bytes. */
void trace_line(const char *format, ...) __attribute__((format(printf, 1, 2)));

/* Rows of one display, or of two side by side. */
void trace_rows(const uint8_t *left, const uint8_t *right);

/* The running task has waited: its calls count anew. */
void trace_waited(void);

/* The running task is over. */
void trace_task_finished(void);

/* The last line, and for a crash where it was. */
void trace_end(const char *text, const uint32_t *address);

/* Value for a text or a picture, equal for equal ones. */
uint32_t trace_hash(const void *data, uint32_t size);

#endif
