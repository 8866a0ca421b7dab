/* Vector table, first instructions, and the switch between tasks. */

	.syntax unified
	.cpu cortex-m3
	.thumb

	.section .vectors, "a"
vectors:
	.word __handler_stack_end
	.word __reset_entry
	.word crash_entry		/* NMI */
	.word crash_entry		/* hard fault */
	.word crash_entry		/* memory management */
	.word crash_entry		/* bus fault */
	.word crash_entry		/* usage fault */
	/* Two reserved entries tell a reader of the file what it holds. */
	.word __image_length
	.ascii "TLR1"
	.word 0
	.word 0
	.word crash_entry		/* supervisor call */
	.word crash_entry		/* debug monitor */
	.word 0
	.word switch_entry		/* PendSV */
	.word kernel_tick		/* SysTick */

	.text

	.global __reset_entry
	.thumb_func
__reset_entry:
	/* Until there is a task's stack to switch from. */
	cpsid	i
	ldr	r0, =__data_start
	ldr	r1, =__data_end
	ldr	r2, =__data_load
1:	cmp	r0, r1
	bhs	2f
	ldr	r3, [r2], #4
	str	r3, [r0], #4
	b	1b
2:	ldr	r0, =__bss_start
	ldr	r1, =__bss_end
	movs	r3, #0
3:	cmp	r0, r1
	bhs	4f
	str	r3, [r0], #4
	b	3b
4:	bl	kernel_run
	b	.

/*
 * The handler stack holds nothing of a task, so a switch needs only to move the
 * eight registers that the processor has not put on the task's stack itself.
 */
	.global switch_entry
	.thumb_func
switch_entry:
	mrs	r0, psp
	stmdb	r0!, {r4-r11}
	push	{r3, lr}
	bl	kernel_switch
	pop	{r3, lr}
	ldmia	r0!, {r4-r11}
	msr	psp, r0
	bx	lr

	.thumb_func
crash_entry:
	mrs	r0, psp
	/* The stack may be what broke: start the handler stack anew. */
	ldr	r1, =__handler_stack_end
	msr	msp, r1
	b	kernel_crash
