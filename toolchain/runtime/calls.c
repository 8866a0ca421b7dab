/* The calls that a program makes. Nothing moves here: they are told. */

#include "vantrel.h"

#include <stdarg.h>
#include <stddef.h>
#include <stdio.h>

#include "faces.h"
#include "kernel.h"
#include "sensors.h"
#include "symbols.h"
#include "trace.h"

#define WAIT_LONGEST 2000000000u

static const uint8_t dark[8];

void set_motor(int port, int speed)
{
	char letter = port >= 1 && port <= 4 ? (char)('A' + port - 1) : '?';

	kernel_lock();
	if (trace_heard(trace_changed(TRACE_MOTOR, port, (uint32_t)speed)))
		trace_line("motor %c (%d) speed %d", letter, port, speed);
	kernel_unlock();
}

void wait(double seconds)
{
	uint32_t ms;

	if (!(seconds > 0))
		ms = 0;
	else if (seconds >= WAIT_LONGEST / 1000.0)
		ms = WAIT_LONGEST;
	else
		ms = (uint32_t)(seconds * 1000 + 0.5);

	kernel_lock();
	if (ms > 0)
		trace_waited();
	if (trace_heard(trace_changed(TRACE_WAIT, kernel_task(), ms)))
		trace_line("wait %g s", seconds);
	kernel_unlock();
	kernel_sleep(ms);
}

void servo_ctrl(int id, int speed, int position, int last)
{
	int values[3] = { speed, position, last };

	kernel_lock();
	if (trace_heard(trace_changed(TRACE_SERVO, id, trace_hash(values, sizeof(values))))) {
		if (last == 0)
			trace_line("servo %d speed %d position %d", id, speed, position);
		else
			trace_line("servo %d speed %d position %d last %d", id, speed, position, last);
	}
	kernel_unlock();
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

	kernel_lock();
	if (trace_changed(touch ? TRACE_TOUCH : TRACE_ANALOGUE, reader, (uint32_t)value))
		trace_line("%s %d -> %d", touch ? "touch" : "analogue", port, value);
	kernel_unlock();
	return value;
}

int switch_state(int port)
{
	return read_sensor(SENSOR_TOUCH, port);
}

int TZ_AI(int port)
{
	return read_sensor(SENSOR_ANALOGUE, port);
}

void PlaySpeech(int sound)
{
	kernel_lock();
	if (trace_heard(trace_changed(TRACE_SOUND, kernel_task(), (uint32_t)sound)))
		trace_line("sound %d", sound);
	kernel_unlock();
}

void disp_symble(int port, int symbol)
{
	int known = symbol >= 0 && symbol < SYMBOL_COUNT;
	const uint8_t *rows = known ? symbols[symbol] : dark;

	kernel_lock();
	if (trace_heard(trace_changed(TRACE_DISPLAY, port, trace_hash(rows, 8)))) {
		trace_line("display %d symbol %d%s", port, symbol, known ? "" : " unknown");
		trace_rows(rows, NULL);
	}
	kernel_unlock();
}

void disp_emoji(int left_port, int right_port, int emoji)
{
	int known = emoji >= 1 && emoji <= FACE_COUNT;
	const uint8_t *left = known ? faces[emoji - 1].left : dark;
	const uint8_t *right = known ? faces[emoji - 1].right : dark;
	int changed;

	kernel_lock();
	changed = trace_changed(TRACE_DISPLAY, left_port, trace_hash(left, 8));
	changed |= trace_changed(TRACE_DISPLAY, right_port, trace_hash(right, 8));
	if (trace_heard(changed)) {
		trace_line("display %d %d emoji %d %s", left_port, right_port, emoji,
			   known ? faces[emoji - 1].name : "unknown");
		trace_rows(left, right);
	}
	kernel_unlock();
}

void disp_custom(int port, LedMaritx matrix)
{
	kernel_lock();
	if (trace_heard(trace_changed(TRACE_DISPLAY, port, trace_hash(matrix.rows, 8)))) {
		trace_line("display %d custom", port);
		trace_rows(matrix.rows, NULL);
	}
	kernel_unlock();
}

void Printf(const char *format, ...)
{
	static char text[512];
	va_list arguments;
	uint32_t length;

	kernel_lock();
	va_start(arguments, format);
	length = (uint32_t)vsnprintf(text, sizeof(text), format, arguments);
	va_end(arguments);
	if (length >= sizeof(text))
		length = sizeof(text) - 1;
	if (trace_heard(trace_changed(TRACE_PRINT, kernel_task(), trace_hash(text, length))))
		trace_line("print %s", text);
	kernel_unlock();
}
