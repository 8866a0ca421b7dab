/* Tasks and time. */
#ifndef KERNEL_H
#define KERNEL_H

#include <stdint.h>

/* Milliseconds since the start. */
uint32_t kernel_time(void);

/* 0 for the main program, n for task n. */
int kernel_task(void);

/* Number of tasks beside the main program. */
int kernel_task_count(void);

/*
 * Lets the running task sleep for no less than this; with 0 the others only get their turn.
 */
void kernel_sleep(uint32_t ms);

/*
 * Between these two calls no other task runs. They may be nested. Time goes on,
 * and a switch that became due is made up for at the end.
 */
void kernel_lock(void);
void kernel_unlock(void);

/* Called every millisecond, as a handler. */
void kernel_tick(void);

#endif
