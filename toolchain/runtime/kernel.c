#include "kernel.h"

#include <stddef.h>

#include "board.h"
#include "processor.h"
#include "vantrel.h"

#define TASKS_MAX 16
#define IDLE_STACK_WORDS 128

enum state { UNUSED, READY, SLEEPING };

struct task {
	uint32_t *stack;	/* saved stack pointer while it does not run */
	uint32_t bottom;	/* of its stack, or 0 if that has no guard */
	uint32_t wake;
	volatile enum state state;
};

/* Set by the linker; only their addresses mean something. */
extern char __task_space_start[], __task_space_end[], __user_task_number[];

#define WEAK __attribute__((weak))
WEAK void user_task1(void);
WEAK void user_task2(void);
WEAK void user_task3(void);
WEAK void user_task4(void);
WEAK void user_task5(void);
WEAK void user_task6(void);
WEAK void user_task7(void);
WEAK void user_task8(void);
WEAK void user_task9(void);
WEAK void user_task10(void);
WEAK void user_task11(void);
WEAK void user_task12(void);
WEAK void user_task13(void);
WEAK void user_task14(void);
WEAK void user_task15(void);
WEAK void user_task16(void);

static void (*const bodies[1 + TASKS_MAX])(void) = {
	user_main,
	user_task1, user_task2, user_task3, user_task4,
	user_task5, user_task6, user_task7, user_task8,
	user_task9, user_task10, user_task11, user_task12,
	user_task13, user_task14, user_task15, user_task16,
};

/* The last one idles: it runs when all the others sleep. */
#define IDLE (1 + TASKS_MAX)
static struct task tasks[IDLE + 1];
static uint32_t idle_stack[IDLE_STACK_WORDS] __attribute__((aligned(8)));

static volatile int current = IDLE;
static volatile uint32_t now;
static volatile uint32_t locks;
static volatile int switch_due;
static volatile int stop_due;

uint32_t kernel_time(void)
{
	return now;
}

int kernel_task(void)
{
	return current;
}

int kernel_task_count(void)
{
	return (int)(uintptr_t)__user_task_number;
}

void kernel_lock(void)
{
	/* A task that comes between load and store leaves the count as it was. */
	locks++;
	__asm__ volatile("" ::: "memory");
}

void kernel_unlock(void)
{
	__asm__ volatile("" ::: "memory");
	if (locks == 1 && stop_due)
		board_stop(BOARD_STOPPED, 0);
	locks--;
	if (locks == 0 && switch_due)
		processor_request_switch();
}

void kernel_sleep(uint32_t ms)
{
	uint32_t wake, part;

	if (ms == 0) {
		processor_request_switch();
		return;
	}

	do {
		wake = now + ms;
		part = board_tick_part();
	} while (wake != now + ms);

	processor_interrupts_off();
	tasks[current].wake = wake;
	tasks[current].state = SLEEPING;
	processor_request_switch();
	processor_interrupts_on();

	/* The ticks count from the one before the call: what had passed since that is still due. */
	while (now == wake && board_tick_part() < part)
		processor_request_switch();
}

void kernel_tick(void)
{
	int i, ready = 0;

	now++;
	for (i = 0; i < IDLE; i++) {
		if (tasks[i].state == SLEEPING && (int32_t)(now - tasks[i].wake) >= 0)
			tasks[i].state = READY;
		if (tasks[i].state == READY && i != current)
			ready = 1;
	}

	if (board_stop_wanted())
		stop_due = 1;

	if (locks > 0) {
		switch_due |= ready;
		return;
	}
	if (stop_due)
		board_stop(BOARD_STOPPED, 0);
	if (ready)
		processor_request_switch();
}

/* Takes the stack of the task that ran and gives that of the next one. */
uint32_t *kernel_switch(uint32_t *stack)
{
	int i, next = IDLE;

	switch_due = 0;
	tasks[current].stack = stack;
	for (i = 1; i <= IDLE; i++) {
		int candidate = (current + i) % IDLE;

		if (current == IDLE)
			candidate = i - 1;
		if (candidate < IDLE && tasks[candidate].state == READY) {
			next = candidate;
			break;
		}
	}
	current = next;
	processor_guard(tasks[next].bottom);
	return tasks[next].stack;
}

void kernel_crash(uint32_t *frame)
{
	uint32_t bottom = tasks[current].bottom;
	/* The stack pointer itself may be what the program broke. */
	int stacked = (char *)frame >= __task_space_start && (char *)frame < __task_space_end;

	processor_guard(0);
	if (bottom != 0 && processor_overflowed(bottom, frame))
		board_stop(BOARD_OVERFLOW, 0);
	board_stop(BOARD_CRASHED, stacked ? processor_fault_address(frame) : 0);
}

/* Every task begins here. */
static void task_entry(int number)
{
	kernel_lock();
	board_task_started();
	kernel_unlock();

	bodies[number]();

	kernel_lock();
	board_task_finished();
	if (number == 0)
		board_stop(BOARD_ENDED, 0);
	kernel_unlock();

	processor_interrupts_off();
	tasks[number].state = UNUSED;
	processor_request_switch();
	processor_interrupts_on();
	for (;;)
		;
}

void kernel_run(void)
{
	uint32_t bottom = (uint32_t)(uintptr_t)__task_space_start;
	uint32_t space = (uint32_t)(uintptr_t)__task_space_end - bottom;
	int count = kernel_task_count() + 1;
	uint32_t size = space / (uint32_t)count & ~(PROCESSOR_STACK_UNIT - 1);
	int i;

	board_open();
	processor_open();
	for (i = 0; i < count; i++) {
		tasks[i].bottom = bottom + (uint32_t)i * size;
		tasks[i].stack = processor_prepare_stack(tasks[i].bottom + size, task_entry, i);
		tasks[i].state = READY;
	}

	/* What runs when all the others sleep is this. */
	tasks[IDLE].state = READY;
	board_start_tick();
	processor_request_switch();
	processor_idle(idle_stack + IDLE_STACK_WORDS);
}
