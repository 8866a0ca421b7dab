/*
 * What the kernel and the calls ask of the machine around the processor. A board is one file that
 * defines all of this; board_emulator.c is that of the emulated controller.
 *
 * No other task runs while one of these functions does, so none needs a lock of its own; only
 * board_tick_part() and board_stop_wanted() are called at any time. They should be short: the tick
 * goes on meanwhile, but a task that is due has to wait.
 */
#ifndef BOARD_H
#define BOARD_H

#include <stdint.h>

/* Clock and outputs. Called once and first of all, with interrupts off. */
void board_open(void);

/* From now on kernel_tick() is to be called every millisecond; interrupts are still off. */
void board_start_tick(void);

/*
 * How much of the present millisecond has passed, in any unit that is fine enough. Goes back to 0
 * in the moment at which the next tick becomes pending.
 */
uint32_t board_tick_part(void);

/* One byte of what the program prints; a line feed ends each line. */
void board_put(char byte);

/* Arguments are those of the program's calls, unchecked. */
void board_motor(int port, int speed);
void board_servo(int id, int speed, int position, int last);
void board_sound(int sound);

/* Eight rows from the top, the leftmost dot is bit 7. */
struct board_picture {
	int port;
	const uint8_t *rows;
};

/* Shows pictures at the same time; the name says for a reader what they are: "symbol 45". */
void board_display(const struct board_picture *pictures, int count, const char *name);

/* As switch_state() and TZ_AI() give them to the program. */
int board_touch(int port);
int board_analogue(int port);

enum board_end {
	BOARD_ENDED,		/* user_main has returned */
	BOARD_STOPPED,		/* board_stop_wanted() said so */
	BOARD_OVERFLOW,		/* a task needed more stack than it has */
	BOARD_CRASHED		/* the program did what the processor can't do, at an address */
};

/* Asked at every tick: whether something outside, such as a switch, wants the program stopped. */
int board_stop_wanted(void);

/* Stops all that moves, and everything else for good. */
void board_stop(enum board_end end, uint32_t address) __attribute__((noreturn));

/* For a board that tells what the program does; others leave these empty. */
void board_task_started(void);
void board_task_finished(void);
void board_waits(double seconds);

#endif
