#include "emulator_sensors.h"

#include "kernel.h"

#define SCRIPT_MAGIC 0x31534E53u	/* "SNS1" */
#define SCRIPT_BYTES 1024

/*
 * Nothing is pressed, and nothing stands before an infrared sensor, which then
 * reads more than the 500 that programs compare with.
 */
#define TOUCH_FREE 0
#define ANALOGUE_FREE 1000

struct entry {
	uint32_t time;
	uint16_t kind;
	uint16_t port;
	int32_t value;
};

struct script {
	uint32_t magic;
	uint32_t limit;
	uint32_t count;
	struct entry entries[(SCRIPT_BYTES - 12) / sizeof(struct entry)];
};

/* Lies where the linker put it; written from outside before the start. */
extern volatile struct script __sensor_script;

static uint32_t count;
static uint32_t limit;

void sensors_open(void)
{
	uint32_t room = sizeof(__sensor_script.entries) / sizeof(struct entry);

	if (__sensor_script.magic != SCRIPT_MAGIC || __sensor_script.count > room)
		return;
	count = __sensor_script.count;
	limit = __sensor_script.limit;
}

uint32_t sensors_limit(void)
{
	return limit;
}

int sensors_read(enum sensor_kind kind, int port)
{
	int value = kind == SENSOR_TOUCH ? TOUCH_FREE : ANALOGUE_FREE;
	uint32_t time = kernel_time();
	uint32_t i;

	/* In order of time: the last one that has come about holds. */
	for (i = 0; i < count; i++) {
		volatile struct entry *entry = &__sensor_script.entries[i];

		if (entry->time > time)
			break;
		if (entry->kind == kind && entry->port == port)
			value = entry->value;
	}
	return value;
}
