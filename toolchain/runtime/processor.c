#include "processor.h"

#define REGISTER(address) (*(volatile uint32_t *)(address))

#define TICK_CONTROL REGISTER(0xE000E010)
#define TICK_RELOAD REGISTER(0xE000E014)
#define TICK_VALUE REGISTER(0xE000E018)

#define INTERRUPT_CONTROL REGISTER(0xE000ED04)
#define SWITCH_PENDING (1u << 28)
#define HANDLER_PRIORITY_3 REGISTER(0xE000ED20)
#define FAULT_STATUS REGISTER(0xE000ED28)
#define FAULT_ADDRESS_VALID (1u << 7)
#define FAULT_ADDRESS REGISTER(0xE000ED34)

#define REGION_CONTROL REGISTER(0xE000ED94)
#define REGION_NUMBER REGISTER(0xE000ED98)
#define REGION_BASE REGISTER(0xE000ED9C)
#define REGION_SIZE REGISTER(0xE000EDA0)

/* Size and alignment of a region are 2^(11+1) bytes; nobody may access or execute it. */
#define REGION_FORBIDDEN (1u << 28 | 11u << 1 | 1u)
_Static_assert(PROCESSOR_GUARD_BYTES == 1u << 12, "size of the guard's regions");

void processor_open(void)
{
	/* Tick and switch never interrupt one another. */
	HANDLER_PRIORITY_3 = 0xE0E00000;
	/* Regions on, with the usual map for everything that they do not cover. */
	REGION_CONTROL = 5;
}

void processor_interrupts_off(void)
{
	__asm__ volatile("cpsid i" ::: "memory");
}

void processor_interrupts_on(void)
{
	__asm__ volatile("cpsie i\n\tisb" ::: "memory");
}

void processor_start_tick(uint32_t cycles)
{
	TICK_RELOAD = cycles - 1;
	TICK_VALUE = 0;
	TICK_CONTROL = 7;
}

uint32_t processor_tick_part(void)
{
	uint32_t part = TICK_RELOAD - TICK_VALUE;

	/* A tick that has become pending is taken before anything else is read. */
	__asm__ volatile("isb" ::: "memory");
	return part;
}

void processor_request_switch(void)
{
	INTERRUPT_CONTROL = SWITCH_PENDING;
	__asm__ volatile("dsb\n\tisb" ::: "memory");
}

uint32_t *processor_prepare_stack(uint32_t top, void (*entry)(int), int argument)
{
	uint32_t *stack = (uint32_t *)top;
	int i;

	*--stack = 1u << 24;				/* status: Thumb */
	*--stack = (uint32_t)(uintptr_t)entry & ~1u;	/* a place, unlike a pointer to a function */
	*--stack = 0;					/* the entry does not return */
	for (i = 0; i < 4; i++)
		*--stack = 0;				/* r12, r3 to r1 */
	*--stack = (uint32_t)argument;
	for (i = 0; i < 8; i++)
		*--stack = 0;				/* r11 to r4 */
	return stack;
}

void processor_idle(uint32_t *top)
{
	__asm__ volatile("msr psp, %0\n\t"
			 "movs r3, #2\n\t"
			 "msr control, r3\n\t"
			 "isb\n\t"
			 "cpsie i\n"
			 "1:\twfi\n\t"
			 "b 1b" :: "r"(top) : "r3", "memory");
	__builtin_unreachable();
}

static void set_region(uint32_t number, uint32_t base, uint32_t size)
{
	REGION_NUMBER = number;
	REGION_SIZE = 0;
	REGION_BASE = base;
	REGION_SIZE = size;
}

/*
 * Two regions: one ends where the stack's bottom lies in it, by leaving out eighths of it, the
 * other comes before that. They lie on stacks of other tasks, which are not in use meanwhile.
 */
void processor_guard(uint32_t bottom)
{
	uint32_t base = bottom & ~(PROCESSOR_GUARD_BYTES - 1);
	uint32_t eighths = (bottom - base) / PROCESSOR_STACK_UNIT;
	uint32_t left_out = 0xFFu << eighths & 0xFF;

	if (bottom == 0) {
		set_region(0, 0, 0);
		set_region(1, 0, 0);
	} else {
		set_region(0, base - PROCESSOR_GUARD_BYTES, REGION_FORBIDDEN);
		set_region(1, base, REGION_FORBIDDEN | left_out << 8);
	}
	__asm__ volatile("dsb\n\tisb" ::: "memory");
}

int processor_overflowed(uint32_t bottom, const uint32_t *frame)
{
	/* The access, or the frame that should have been stacked, hit the guard. */
	return (uintptr_t)frame < bottom
		|| ((FAULT_STATUS & FAULT_ADDRESS_VALID)
		    && bottom - FAULT_ADDRESS - 1 < 2 * PROCESSOR_GUARD_BYTES);
}

uint32_t processor_fault_address(const uint32_t *frame)
{
	return frame[6];
}

void processor_halt(void)
{
	processor_interrupts_off();
	TICK_CONTROL = 0;
	for (;;)
		__asm__ volatile("wfi");
}
