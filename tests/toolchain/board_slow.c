/*
 * Another board, the MPS2 with an FPGA image of a Cortex-M3, for tests: what it does takes longer
 * than a millisecond and its tick runs early. Port 0 has a clock: as a touch sensor it tells the
 * time in milliseconds, as an analogue input the microseconds since the last one.
 */

#include "board.h"

#include "kernel.h"
#include "processor.h"

#define CYCLES_PER_MILLISECOND 25000u

#define REGISTER(address) (*(volatile uint32_t *)(address))
#define UART_DATA REGISTER(0x40004000)
#define UART_STATE REGISTER(0x40004004)
#define UART_CONTROL REGISTER(0x40004008)
#define UART_DIVISOR REGISTER(0x40004010)

static void spin(int turns)
{
	while (turns-- > 0)
		__asm__ volatile("");
}

static void put_text(const char *text)
{
	while (*text)
		board_put(*text++);
}

static void put_number(const char *what, uint32_t number)
{
	char digits[11];
	char *digit = digits + sizeof(digits) - 1;

	*digit = '\0';
	do {
		*--digit = (char)('0' + number % 10);
	} while (number /= 10);
	put_text(what);
	put_text(digit);
	put_text("\n");
}

void board_open(void)
{
	UART_DIVISOR = CYCLES_PER_MILLISECOND * 1000 / 115200;
	UART_CONTROL = 1;
}

void board_start_tick(void)
{
	processor_start_tick(CYCLES_PER_MILLISECOND);
	/* Several ticks before there is a stack to switch from. */
	spin(20000);
}

uint32_t board_tick_part(void)
{
	return processor_tick_part();
}

void board_put(char byte)
{
	while (UART_STATE & 1)
		;
	UART_DATA = (uint8_t)byte;
	spin(500);
}

void board_motor(int port, int speed)
{
	put_number("motor ", (uint32_t)port);
	put_number("speed ", (uint32_t)speed);
}

void board_servo(int id, int speed, int position, int last)
{
	(void)speed;
	(void)last;
	put_number("servo ", (uint32_t)id);
	put_number("position ", (uint32_t)position);
}

void board_sound(int sound)
{
	uint32_t begin = kernel_time();

	put_number("sound ", (uint32_t)sound);
	while (kernel_time() - begin < 4)
		;
	put_number("again ", (uint32_t)sound);
}

void board_display(const struct board_picture *pictures, int count, const char *name)
{
	put_number("display ", (uint32_t)pictures[0].port);
	put_text(name);
	put_number(" with ", pictures[count - 1].rows[3]);
}

int board_touch(int port)
{
	if (port == 0)
		return (int)kernel_time();
	put_number("touch ", (uint32_t)port);
	put_number("again ", (uint32_t)port);
	return 0;
}

int board_analogue(int port)
{
	if (port == 0)
		return (int)(board_tick_part() / (CYCLES_PER_MILLISECOND / 1000));
	put_number("analogue ", (uint32_t)port);
	put_number("again ", (uint32_t)port);
	return 0;
}

int board_stop_wanted(void)
{
	return 0;
}

void board_stop(enum board_end end, uint32_t address)
{
	(void)address;
	put_number("stop ", end);
	/* Ends the emulator. */
	__asm__ volatile("movs r0, #0x18\n\t"
			 "ldr r1, =0x20026\n\t"
			 "bkpt 0xAB" ::: "r0", "r1", "memory");
	processor_halt();
}

void board_task_started(void)
{
}

void board_task_finished(void)
{
}

void board_waits(double seconds)
{
	(void)seconds;
}
