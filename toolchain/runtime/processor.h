/* The processor, a Cortex-M3: what the kernel needs of it, whatever board it is on. */
#ifndef PROCESSOR_H
#define PROCESSOR_H

#include <stdint.h>

/* Free memory that the lowest stack needs below it, and what its bottom is aligned to. */
#define PROCESSOR_GUARD_BYTES 4096u

/* Bottoms of stacks are multiples of this. */
#define PROCESSOR_STACK_UNIT (PROCESSOR_GUARD_BYTES / 8)

/* Before all else that is declared here; interrupts have to be off. */
void processor_open(void);

void processor_interrupts_off(void);
void processor_interrupts_on(void);

/* Calls kernel_tick() every so many cycles: up to 2^24, once interrupts are on. */
void processor_start_tick(uint32_t cycles);

/* Cycles since the last tick became pending. */
uint32_t processor_tick_part(void);

/* Has kernel_switch() called as soon as no other handler runs and interrupts are on. */
void processor_request_switch(void);

/* Lays down what a task finds that begins with a call; answers its stack pointer. */
uint32_t *processor_prepare_stack(uint32_t top, void (*entry)(int), int argument);

/* Turns into a task with the stack below top, switches interrupts on, and sleeps between them. */
void processor_idle(uint32_t *top) __attribute__((noreturn));

/* Forbids every access to the guard below a stack; with 0 to none. */
void processor_guard(uint32_t bottom);

/* Whether a fault comes from a stack that has grown beyond its bottom. */
int processor_overflowed(uint32_t bottom, const uint32_t *frame);

/* Address of the instruction that a fault has interrupted. */
uint32_t processor_fault_address(const uint32_t *frame);

/* Interrupts off, tick off, asleep for good. */
void processor_halt(void) __attribute__((noreturn));

#endif
