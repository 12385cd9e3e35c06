// The frames on armv7 through which a library of the phone and this machine call each other.
//
// Each has a function arrange the arguments below itself, aligned as this machine demands, and calls the function that this
// one gives. It keeps every register that either side may expect to be kept, so that an exception which has passed the frames
// of a library finds them here.

    .syntax unified
    .arch   armv7-a
    .fpu    neon
    .arm
    .text

// Room for the words of the arguments.
    .equ    room, 4 * 32

// What `arrange` is called with: ip, the arguments' words as they come, and the place for them as they go.
    .macro  FRAME name, arrange
    .globl  \name
    .hidden \name
    .type   \name, %function
    .p2align 4
\name:
    .fnstart
    push    {r0-r3}
    .pad    #16
    push    {r4-r11, lr}
    .save   {r4-r11, lr}
    vpush   {d8-d15}
    .vsave  {d8-d15}
    mov     r7, sp
    .setfp  r7, sp
    sub     sp, sp, #room
    bic     sp, sp, #7
    mov     r0, ip
    add     r1, r7, #(64 + 36)
    mov     r2, sp
    bl      \arrange
    mov     ip, r0
    pop     {r0-r3}
    blx     ip
    .globl  \name\()Returns
    .hidden \name\()Returns
\name\()Returns:
    mov     sp, r7
    vpop    {d8-d15}
    pop     {r4-r11, lr}
    add     sp, sp, #16
    bx      lr
    .fnend
    .size   \name, . - \name
    .endm

    FRAME   phoneCallsThisMachine, arrangeCallOfThisMachine
    FRAME   thisMachineCallsPhone, arrangeCallOfThePhone
    FRAME   phone_objc_msgSend, arrangeSend
    FRAME   phone_objc_msgSend_stret, arrangeSendForStructure
    FRAME   phone_objc_msgSendSuper, arrangeSendToSuper
    FRAME   phone_objc_msgSendSuper_stret, arrangeSendToSuperForStructure
    FRAME   phoneLog, arrangeLog

    .section .note.GNU-stack, "", %progbits
