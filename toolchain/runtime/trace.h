/* The trace: one line for each call that a program makes. */
#ifndef TRACE_H
#define TRACE_H

#include <stdint.h>

void trace_open(void);

/* What a line is about; with the number it tells what its value belongs to. */
enum trace_subject {
	TRACE_MOTOR = 1, TRACE_SERVO, TRACE_SOUND, TRACE_DISPLAY, TRACE_PRINT,
	TRACE_WAIT, TRACE_TOUCH, TRACE_ANALOGUE
};

/*
 * A call locks the other tasks out, asks whether it is to be heard, writes its
 * lines and unlocks. kernel_lock() is due before any of the functions below.
 */

/* Remembers the value of a subject; answers whether it is a new one. */
int trace_changed(enum trace_subject subject, int number, uint32_t value);

/*
 * Answers whether a call is to be written. A task that has made many calls
 * without a wait between is heard only when it changes something, else a loop
 * without a wait would drown everything.
 */
int trace_heard(int changed);

/* One line with time and task before it. */
void trace_line(const char *format, ...) __attribute__((format(printf, 1, 2)));

/* Rows of one display, or of two side by side. */
void trace_rows(const uint8_t *left, const uint8_t *right);

/* The running task has waited: its calls count anew. */
void trace_waited(void);

void trace_task_start(void);
void trace_task_end(void);

/* The three ways in which a run is over. */
void trace_end(void) __attribute__((noreturn));
void trace_limit(void) __attribute__((noreturn));
void trace_crash(int overflow, uint32_t address) __attribute__((noreturn));

/* Value for a text or a picture, equal for equal ones. */
uint32_t trace_hash(const void *data, uint32_t size);

#endif
