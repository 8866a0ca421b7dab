/*
 * The emulated controller, an LM3S6965 with a crystal of 8 MHz. It has no motors: what it is told
 * goes to the trace, a line for each call, and its sensors give what was laid into memory.
 */

#include "board.h"

#include <stddef.h>

#include "emulator_sensors.h"
#include "emulator_trace.h"
#include "kernel.h"
#include "processor.h"

#define CYCLES_PER_SECOND 50000000u
#define BITS_PER_SECOND 115200u

#define REGISTER(address) (*(volatile uint32_t *)(address))

#define RAW_INTERRUPTS REGISTER(0x400FE050)
#define INTERRUPTS_CLEAR REGISTER(0x400FE058)
#define LOOP_LOCKED (1u << 6)

#define CLOCK REGISTER(0x400FE060)
#define CLOCK_DIVIDE_BY_4 (3u << 23)
#define CLOCK_DIVIDED (1u << 22)
#define CLOCK_LOOP_OFF (1u << 13)
#define CLOCK_PAST_LOOP (1u << 11)
#define CLOCK_CRYSTAL_8_MHZ (14u << 6)
#define CLOCK_FROM_INTERNAL (1u << 4)
#define CLOCK_INTERNAL_OFF (1u << 1)
#define CLOCK_MAIN_OFF (1u << 0)

#define GATES_1 REGISTER(0x400FE104)
#define GATES_1_UART (1u << 0)
#define GATES_2 REGISTER(0x400FE108)
#define GATES_2_PORT_A (1u << 0)

/* Pins 0 and 1 of port A are input and output of the UART. */
#define PINS_ALTERNATE REGISTER(0x40004420)
#define PINS_DIGITAL REGISTER(0x4000451C)
#define PINS_UART 3u

#define UART_DATA REGISTER(0x4000C000)
#define UART_FLAGS REGISTER(0x4000C018)
#define UART_FULL (1u << 5)
#define UART_BUSY (1u << 3)
#define UART_DIVISOR REGISTER(0x4000C024)
#define UART_DIVISOR_64THS REGISTER(0x4000C028)
#define UART_LINE REGISTER(0x4000C02C)
#define UART_8_BITS_QUEUED (3u << 5 | 1u << 4)
#define UART_CONTROL REGISTER(0x4000C030)
#define UART_ON_BOTH_WAYS (1u << 9 | 1u << 8 | 1u << 0)

/* A crystal has settled after some 10 ms, which here are cycles of the internal 12 MHz. */
static void let_crystal_settle(void)
{
	uint32_t i;

	for (i = 0; i < 60000; i++)
		__asm__ volatile("");
}

/* 8 MHz crystal, 200 MHz from the loop, divided by four. */
static void open_clock(void)
{
	/* From the internal oscillator, past the loop, while the loop's source is being changed. */
	CLOCK = CLOCK_LOOP_OFF | CLOCK_PAST_LOOP | CLOCK_CRYSTAL_8_MHZ | CLOCK_FROM_INTERNAL;
	let_crystal_settle();

	INTERRUPTS_CLEAR = LOOP_LOCKED;
	CLOCK = CLOCK_PAST_LOOP | CLOCK_CRYSTAL_8_MHZ | CLOCK_DIVIDED | CLOCK_DIVIDE_BY_4;
	while (!(RAW_INTERRUPTS & LOOP_LOCKED))
		;
	CLOCK = CLOCK_CRYSTAL_8_MHZ | CLOCK_DIVIDED | CLOCK_DIVIDE_BY_4 | CLOCK_INTERNAL_OFF;
}

static void open_uart(void)
{
	uint32_t divisor_64ths = (CYCLES_PER_SECOND * 4 + BITS_PER_SECOND / 2) / BITS_PER_SECOND;

	GATES_1 |= GATES_1_UART;
	GATES_2 |= GATES_2_PORT_A;
	/* What has got its clock may be used three cycles later: by then this has been read. */
	(void)GATES_2;

	PINS_ALTERNATE |= PINS_UART;
	PINS_DIGITAL |= PINS_UART;
	UART_CONTROL = 0;
	UART_DIVISOR = divisor_64ths / 64;
	UART_DIVISOR_64THS = divisor_64ths % 64;
	/* Takes over the divisor, too. */
	UART_LINE = UART_8_BITS_QUEUED;
	UART_CONTROL = UART_ON_BOTH_WAYS;
}

static void uart_put(char byte)
{
	while (UART_FLAGS & UART_FULL)
		;
	UART_DATA = (uint8_t)byte;
}

void board_open(void)
{
	open_clock();
	open_uart();
	trace_open(uart_put);
	sensors_open();
}

void board_start_tick(void)
{
	processor_start_tick(CYCLES_PER_SECOND / 1000);
}

uint32_t board_tick_part(void)
{
	return processor_tick_part();
}

int board_stop_wanted(void)
{
	return sensors_limit() != 0 && kernel_time() >= sensors_limit();
}

void board_stop(enum board_end end, uint32_t address)
{
	static const char *const texts[] = { "end", "limit reached", "crash", "crash" };

	processor_interrupts_off();
	if (end == BOARD_OVERFLOW)
		trace_text("", "stack overflow");
	else if (end == BOARD_CRASHED)
		trace_text("", "bad access");
	trace_end(texts[end], end == BOARD_CRASHED ? &address : NULL);
	while (UART_FLAGS & UART_BUSY)
		;
	processor_halt();
}

void board_task_started(void)
{
	trace_line("start");
}

void board_task_finished(void)
{
	trace_task_finished();
}

void board_waits(double seconds)
{
	int waits = seconds > 0;

	if (waits)
		trace_waited();
	if (trace_heard(trace_changed(TRACE_WAIT, kernel_task(),
				      waits ? trace_hash(&seconds, sizeof(seconds)) : 0)))
		trace_line("wait %g s", seconds);
}

void board_motor(int port, int speed)
{
	char letter = port >= 1 && port <= 4 ? (char)('A' + port - 1) : '?';

	if (trace_heard(trace_changed(TRACE_MOTOR, port, (uint32_t)speed)))
		trace_line("motor %c (%d) speed %d", letter, port, speed);
}

void board_servo(int id, int speed, int position, int last)
{
	int values[3] = { speed, position, last };

	if (!trace_heard(trace_changed(TRACE_SERVO, id, trace_hash(values, sizeof(values)))))
		return;
	if (last == 0)
		trace_line("servo %d speed %d position %d", id, speed, position);
	else
		trace_line("servo %d speed %d position %d last %d", id, speed, position, last);
}

void board_sound(int sound)
{
	if (trace_heard(trace_changed(TRACE_SOUND, kernel_task(), (uint32_t)sound)))
		trace_line("sound %d", sound);
}

void board_display(const struct board_picture *pictures, int count, const char *name)
{
	int i, changed = 0;

	for (i = 0; i < count; i++)
		changed |= trace_changed(TRACE_DISPLAY, pictures[i].port, trace_hash(pictures[i].rows, 8));
	if (!trace_heard(changed))
		return;
	if (count == 1) {
		trace_line("display %d %s", pictures[0].port, name);
		trace_rows(pictures[0].rows, NULL);
	} else {
		trace_line("display %d %d %s", pictures[0].port, pictures[1].port, name);
		trace_rows(pictures[0].rows, pictures[1].rows);
	}
}

/*
 * Reading is what loops do all the time, so a read is told the first time and
 * when the task gets another value than before.
 */
static int read_sensor(enum sensor_kind kind, int port)
{
	int touch = kind == SENSOR_TOUCH;
	int value = sensors_read(kind, port);
	int reader = kernel_task() << 20 | (port & 0xFFFFF);

	if (trace_changed(touch ? TRACE_TOUCH : TRACE_ANALOGUE, reader, (uint32_t)value))
		trace_line("%s %d -> %d", touch ? "touch" : "analogue", port, value);
	return value;
}

int board_touch(int port)
{
	return read_sensor(SENSOR_TOUCH, port);
}

int board_analogue(int port)
{
	return read_sensor(SENSOR_ANALOGUE, port);
}

/* Kept up to the end of the line, for only then it is known whether it is to be heard. */
void board_put(char byte)
{
	static char line[1100];
	static uint32_t length;

	if (byte != '\n') {
		if (length < sizeof(line) - 1)
			line[length++] = byte;
		return;
	}
	line[length] = '\0';
	if (trace_heard(trace_changed(TRACE_PRINT, kernel_task(), trace_hash(line, length))))
		trace_text("print ", line);
	length = 0;
}
