#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <cstddef>
#include <type_traits>

/*
 * The image is copied to and from files as it stands in memory. Every multi-byte field lies at a
 * multiple of its own size within the image, so that no compiler puts gaps between the fields and
 * they may be used as plain members. The assertions below hold the layout.
 */
static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "the image is stored as it stands in memory");

/** The number of pages of an image, of steps of a page and of servos of a step. */
constexpr int actionPageCount = 128;
constexpr int actionStepCount = 8;
constexpr int actionServoCount = 20;

/** One pose of up to 20 servos with its times. 52 bytes. */
struct ActionStep {
    /** The execution time, times 100. */
    qint16 runTime;
    /** The waiting time, times 100. */
    qint16 waitTime;
    /** The pose as servo counts, centre 512; element i belongs to servo ID i + 1. */
    quint16 position[actionServoCount];
    /** Bit i modulo 8 of byte i / 8 is set when servo i + 1 takes part. */
    quint8 servoMask[4];
    /** 1 when the step exists; any other value hides it. */
    quint8 used;
    quint8 reserved[3];
};

static_assert(std::is_trivially_copyable_v<ActionStep> && alignof(ActionStep) == 2);
static_assert(sizeof(ActionStep) == 52);
static_assert(offsetof(ActionStep, runTime) == 0);
static_assert(offsetof(ActionStep, waitTime) == 2);
static_assert(offsetof(ActionStep, position) == 4);
static_assert(offsetof(ActionStep, servoMask) == 44);
static_assert(offsetof(ActionStep, used) == 48);
static_assert(offsetof(ActionStep, reserved) == 49);

/** A named sequence of up to 8 steps. 448 bytes. */
struct ActionPage {
    /** The number of the page that follows. */
    quint8 nextPage;
    quint8 exitPage;
    /** How often the page is played. */
    quint8 repeat;
    quint8 reserved;
    /** The execution rate, times 100. */
    qint16 rate;
    ActionStep steps[actionStepCount];
    /** UTF-8; not terminated when it fills the field. Read it with actionPageName(). */
    char name[26];
};

static_assert(std::is_trivially_copyable_v<ActionPage> && alignof(ActionPage) == 2);
static_assert(sizeof(ActionPage) == 448);
static_assert(offsetof(ActionPage, nextPage) == 0);
static_assert(offsetof(ActionPage, exitPage) == 1);
static_assert(offsetof(ActionPage, repeat) == 2);
static_assert(offsetof(ActionPage, reserved) == 3);
static_assert(offsetof(ActionPage, rate) == 4);
static_assert(offsetof(ActionPage, steps) == 6);
static_assert(offsetof(ActionPage, name) == 422);

/** The image of all actions of a project. 57,472 bytes. */
struct ActionBlock {
    quint8 reserved0[2];
    quint8 reserved2;
    quint8 reserved3;
    quint8 reserved4;
    /** Must be 0 in a loaded image. */
    quint8 firstFormatMark;
    quint8 reserved6[4];
    quint8 reserved10[4];
    quint8 reserved14[26];
    ActionPage pages[actionPageCount];
    quint8 reserved57384[84];
    /** Must be 0 in a loaded image. */
    quint8 secondFormatMark;
    quint8 reserved57469[3];
};

static_assert(std::is_trivially_copyable_v<ActionBlock> && alignof(ActionBlock) == 2);
static_assert(sizeof(ActionBlock) == 57472);
static_assert(offsetof(ActionBlock, reserved0) == 0);
static_assert(offsetof(ActionBlock, reserved2) == 2);
static_assert(offsetof(ActionBlock, reserved3) == 3);
static_assert(offsetof(ActionBlock, reserved4) == 4);
static_assert(offsetof(ActionBlock, firstFormatMark) == 5);
static_assert(offsetof(ActionBlock, reserved6) == 6);
static_assert(offsetof(ActionBlock, reserved10) == 10);
static_assert(offsetof(ActionBlock, reserved14) == 14);
static_assert(offsetof(ActionBlock, pages) == 40);
static_assert(offsetof(ActionBlock, reserved57384) == 57384);
static_assert(offsetof(ActionBlock, secondFormatMark) == 57468);
static_assert(offsetof(ActionBlock, reserved57469) == 57469);

/** What a compiled program ends in, behind the image. 64 bytes. */
struct ActionTrailer {
    quint8 mark[8];
    char text[26];
    quint8 reserved[30];
};

static_assert(std::is_trivially_copyable_v<ActionTrailer> && alignof(ActionTrailer) == 1);
static_assert(sizeof(ActionTrailer) == 64);
static_assert(offsetof(ActionTrailer, mark) == 0);
static_assert(offsetof(ActionTrailer, text) == 8);
static_assert(offsetof(ActionTrailer, reserved) == 34);

/** A step as it stands in a new image: unused, run time 50, all servos centred and taking part. */
ActionStep builtActionStep();

/** A new image. Its steps have the run time 50. */
ActionBlock builtActionBlock();

/** Clears an image. Its steps then have the run time 100, unlike those of a new one. */
void resetActionBlock(ActionBlock& p_block);

/** The trailer of a compiled program, always the same. */
ActionTrailer buildActionTrailer();

/**
 * The bytes of a page's name: from the name field up to the first zero byte. When the field is
 * full they run on into the next page, but never beyond the image. Page: 0 to 127.
 */
QByteArray actionPageName(const ActionBlock& p_block, int p_page);
