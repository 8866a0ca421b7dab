#include "kernel.h"

#include <stddef.h>

#include "registers.h"
#include "sensors.h"
#include "trace.h"
#include "vantrel.h"

#define TASKS_MAX 16
#define GUARD_BYTES 256u
#define IDLE_STACK_WORDS 128

enum state { UNUSED, READY, SLEEPING };

struct task {
	uint32_t *stack;	/* saved stack pointer while it does not run */
	uint32_t guard;		/* address of the guard below its stack, or 0 */
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
static volatile int limit_due;

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

static void request_switch(void)
{
	INTERRUPT_CONTROL = SWITCH_PENDING;
	__asm__ volatile("dsb\n\tisb" ::: "memory");
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
	if (locks == 1 && limit_due)
		trace_limit();
	locks--;
	if (locks == 0 && switch_due)
		request_switch();
}

void kernel_sleep(uint32_t ms)
{
	__asm__ volatile("cpsid i" ::: "memory");
	if (ms > 0) {
		tasks[current].wake = now + ms;
		tasks[current].state = SLEEPING;
	}
	INTERRUPT_CONTROL = SWITCH_PENDING;
	__asm__ volatile("cpsie i\n\tisb" ::: "memory");
}

void kernel_halt(void)
{
	__asm__ volatile("cpsid i" ::: "memory");
	TICK_CONTROL = 0;
	for (;;)
		__asm__ volatile("wfi");
}

/* Called every millisecond. */
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

	if (sensors_limit() != 0 && now >= sensors_limit())
		limit_due = 1;

	if (locks > 0) {
		switch_due |= ready;
		return;
	}
	if (limit_due)
		trace_limit();
	if (ready)
		INTERRUPT_CONTROL = SWITCH_PENDING;
}

/* Moves the guard below the stack of the task that runs next. */
static void set_guard(uint32_t address)
{
	GUARD_NUMBER = 0;
	GUARD_SIZE = 0;
	if (address == 0)
		return;
	GUARD_BASE = address;
	/* 2^(7+1) bytes without any access, never executed. */
	GUARD_SIZE = 1u << 28 | 7u << 1 | 1u;
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
	set_guard(tasks[next].guard);
	return tasks[next].stack;
}

void kernel_crash(uint32_t *frame)
{
	uint32_t guard = tasks[current].guard;
	uint32_t address = FAULT_ADDRESS;
	int overflow = 0;

	set_guard(0);
	if (guard != 0) {
		/* The access, or the frame that should have been stacked, hit the guard. */
		overflow = (FAULT_STATUS & 0x80) && address - guard < GUARD_BYTES;
		overflow |= (uintptr_t)frame < guard + GUARD_BYTES;
	}
	trace_crash(overflow, overflow ? 0 : frame[6]);
}

/* Every task begins here; its number is in the first register. */
static void task_entry(int number)
{
	trace_task_start();
	bodies[number]();
	trace_task_end();
	if (number == 0)
		trace_end();

	__asm__ volatile("cpsid i" ::: "memory");
	tasks[number].state = UNUSED;
	INTERRUPT_CONTROL = SWITCH_PENDING;
	__asm__ volatile("cpsie i\n\tisb" ::: "memory");
	for (;;)
		;
}

static void prepare(int number, uint32_t bottom, uint32_t size)
{
	uint32_t *stack = (uint32_t *)(bottom + size);
	int i;

	*--stack = 1u << 24;				/* status: Thumb */
	*--stack = (uint32_t)(uintptr_t)task_entry;
	*--stack = 0;					/* the entry does not return */
	for (i = 0; i < 4; i++)
		*--stack = 0;				/* r12, r3 to r1 */
	*--stack = (uint32_t)number;
	for (i = 0; i < 8; i++)
		*--stack = 0;				/* r11 to r4 */

	tasks[number].stack = stack;
	tasks[number].guard = bottom;
	tasks[number].state = READY;
}

static void start_clock(void)
{
	/* 8 MHz crystal, 200 MHz from the loop, divided by four. */
	SYSTEM_CLOCK = 3u << 23 | 1u << 22 | 14u << 6 | 1u;

	HANDLER_PRIORITY_3 = 0xE0E00000;	/* tick and switch never interrupt one another */
	TICK_RELOAD = 50000 - 1;
	TICK_VALUE = 0;
	TICK_CONTROL = 7;
}

void kernel_run(void)
{
	uint32_t bottom = (uint32_t)(uintptr_t)__task_space_start;
	uint32_t space = (uint32_t)(uintptr_t)__task_space_end - bottom;
	int count = kernel_task_count() + 1;
	uint32_t size = space / (uint32_t)count & ~(GUARD_BYTES - 1);
	int i;

	trace_open();
	sensors_open();
	for (i = 0; i < count; i++)
		prepare(i, bottom + (uint32_t)i * size, size);

	/* Guards on, with the usual map for everything that they do not cover. */
	GUARD_CONTROL = 5;

	start_clock();

	/* From here on this is the idle task. */
	tasks[IDLE].state = READY;
	__asm__ volatile("msr psp, %0\n\t"
			 "movs r3, #2\n\t"
			 "msr control, r3\n\t"
			 "isb" :: "r"(idle_stack + IDLE_STACK_WORDS) : "r3", "memory");
	request_switch();
	for (;;)
		__asm__ volatile("wfi");
}
