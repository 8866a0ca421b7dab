/* The calls that a program makes: one task at a time reaches the board. */

#include "vantrel.h"

#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>

#include "board.h"
#include "faces.h"
#include "kernel.h"
#include "symbols.h"

#define WAIT_LONGEST 2000000000u
#define PRINT_LONGEST 505

static const uint8_t dark[8];

void set_motor(int port, int speed)
{
	kernel_lock();
	board_motor(port, speed);
	kernel_unlock();
}

/* Rounded up, but for the thousandth of one that a fraction may be too large as a number. */
static uint32_t milliseconds(double seconds)
{
	double exact = seconds * 1000 - 0.001;
	uint32_t whole;

	if (!(exact > 0))
		return 0;
	if (exact >= WAIT_LONGEST)
		return WAIT_LONGEST;
	whole = (uint32_t)exact;
	return whole < exact ? whole + 1 : whole;
}

void wait(double seconds)
{
	kernel_lock();
	board_waits(seconds);
	kernel_unlock();
	kernel_sleep(milliseconds(seconds));
}

void servo_ctrl(int id, int speed, int position, int last)
{
	kernel_lock();
	board_servo(id, speed, position, last);
	kernel_unlock();
}

int switch_state(int port)
{
	int value;

	kernel_lock();
	value = board_touch(port);
	kernel_unlock();
	return value;
}

int TZ_AI(int port)
{
	int value;

	kernel_lock();
	value = board_analogue(port);
	kernel_unlock();
	return value;
}

void PlaySpeech(int sound)
{
	kernel_lock();
	board_sound(sound);
	kernel_unlock();
}

static void display(const struct board_picture *pictures, int count,
		    const char *what, int number, const char *remark)
{
	static char name[40];

	kernel_lock();
	snprintf(name, sizeof(name), "%s %d%s%s", what, number, *remark ? " " : "", remark);
	board_display(pictures, count, name);
	kernel_unlock();
}

void disp_symble(int port, int symbol)
{
	int known = symbol >= 0 && symbol < SYMBOL_COUNT;
	struct board_picture picture = { port, known ? symbols[symbol] : dark };

	display(&picture, 1, "symbol", symbol, known ? "" : "unknown");
}

void disp_emoji(int left_port, int right_port, int emoji)
{
	int known = emoji >= 1 && emoji <= FACE_COUNT;
	const struct face *face = &faces[known ? emoji - 1 : 0];
	struct board_picture pictures[2] = {
		{ left_port, known ? face->left : dark },
		{ right_port, known ? face->right : dark },
	};

	display(pictures, 2, "emoji", emoji, known ? face->name : "unknown");
}

void (disp_custom)(int port, LedMaritx matrix)
{
	struct board_picture picture = { port, matrix.rows };

	kernel_lock();
	board_display(&picture, 1, "custom");
	kernel_unlock();
}

static void put_text(const char *text)
{
	while (*text)
		board_put(*text++);
}

void Printf(const char *format, ...)
{
	/* Shared by the tasks, as is what the C library formats fractions with. */
	static char text[PRINT_LONGEST + 1];
	va_list arguments;
	const char *c;
	int length;

	kernel_lock();
	va_start(arguments, format);
	length = vsnprintf(text, sizeof(text), format, arguments);
	va_end(arguments);

	for (c = text; *c; c++) {
		if (*c == '\n')
			put_text("\\n");
		else if ((uint8_t)*c < ' ' || *c == 127)
			board_put('?');
		else
			board_put(*c);
	}
	put_text(length > PRINT_LONGEST ? "...\n" : "\n");
	kernel_unlock();
}
