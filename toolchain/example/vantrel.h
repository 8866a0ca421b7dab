/*
 * Calls that a program for the controller may make.
 *
 * The functions of the C library are declared here one by one instead of
 * including their headers: variables are named by children, and a variable
 * called "index" or "random" must not meet a library function of that name.
 */
#ifndef VANTREL_H
#define VANTREL_H

/*
 * Below each stack lie 4096 bytes that may not be touched. Not even two frames, one on the other,
 * may reach beyond them: a call that needs too much stack has to hit them.
 */
#pragma GCC diagnostic error "-Wframe-larger-than=2040"
#pragma GCC diagnostic error "-Wvla"
#pragma GCC diagnostic error "-Walloca"

/* One 8 by 8 display: eight rows from the top, the leftmost dot is bit 7. */
typedef struct {
    unsigned char rows[8];
} LedMaritx;

/* Motor ports 1 to 4 are labelled A to D; the speed's sign is its direction. */
void set_motor(int port, int speed);

/* Lets the calling task sleep; the others go on. */
void wait(double seconds);

/* Position 512 is the centre of a servo's range. */
void servo_ctrl(int id, int speed, int position, int last);

/* 0 while the touch sensor is free, another value while it is pressed. */
int switch_state(int port);

/* Value of an analogue port; a near object lowers that of an infrared sensor. */
int TZ_AI(int port);

void PlaySpeech(int sound);

void disp_symble(int port, int symbol);
void disp_emoji(int left_port, int right_port, int emoji);
void disp_custom(int port, LedMaritx matrix);
/*
 * A matrix that is written out in a call lives as long as the block around it, and so takes room on
 * the stack for each call of a program. With a block of its own they share one.
 */
#define disp_custom(port, ...) \
    ({ \
        LedMaritx matrix_of_call = __VA_ARGS__; \
        (disp_custom)(port, matrix_of_call); \
    })

/* Takes the format of printf and writes one line. */
void Printf(const char* format, ...);

int abs(int value);
void* memcpy(void* to, const void* from, __SIZE_TYPE__ size);

/* Written by the program; tasks that are not started need not exist. */
void user_main(void);
void user_task1(void);
void user_task2(void);
void user_task3(void);
void user_task4(void);
void user_task5(void);
void user_task6(void);
void user_task7(void);
void user_task8(void);
void user_task9(void);
void user_task10(void);
void user_task11(void);
void user_task12(void);
void user_task13(void);
void user_task14(void);
void user_task15(void);
void user_task16(void);

#endif
