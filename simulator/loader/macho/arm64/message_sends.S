// The phone's message sends on arm64.
//
// Each looks the method up with the arguments kept aside and goes on in it with the arguments in place. For a result of
// less than 32 bits it comes back to extend it. A send to nil gives zero in every register that results come back in.

    .text

    .macro FUNCTION name
    .globl  \name
    .hidden \name
    .type   \name, %function
    .p2align 4
\name:
    .cfi_startproc
    .endm

    .macro END_OF_FUNCTION name
    .cfi_endproc
    .size   \name, . - \name
    .endm

// Leaves the implementation in x16 and the extension in x17. x8 is the place for a result in memory.
    .macro LOOK_UP function
    stp     x29, x30, [sp, #-224]!
    .cfi_def_cfa_offset 224
    .cfi_offset x29, -224
    .cfi_offset x30, -216
    mov     x29, sp
    stp     x0, x1, [sp, #16]
    stp     x2, x3, [sp, #32]
    stp     x4, x5, [sp, #48]
    stp     x6, x7, [sp, #64]
    str     x8, [sp, #80]
    stp     q0, q1, [sp, #96]
    stp     q2, q3, [sp, #128]
    stp     q4, q5, [sp, #160]
    stp     q6, q7, [sp, #192]
    bl      \function
    mov     x16, x0
    mov     x17, x1
    ldp     x0, x1, [sp, #16]
    ldp     x2, x3, [sp, #32]
    ldp     x4, x5, [sp, #48]
    ldp     x6, x7, [sp, #64]
    ldr     x8, [sp, #80]
    ldp     q0, q1, [sp, #96]
    ldp     q2, q3, [sp, #128]
    ldp     q4, q5, [sp, #160]
    ldp     q6, q7, [sp, #192]
    ldp     x29, x30, [sp], #224
    .cfi_restore x29
    .cfi_restore x30
    .cfi_def_cfa_offset 0
    .endm

FUNCTION phone_objc_msgSend
    cbz     x0, .Lsend_to_nil
    LOOK_UP phoneVariadicSendTarget
    cbnz    x17, .Lcall_and_extend
    br      x16
END_OF_FUNCTION phone_objc_msgSend

FUNCTION phone_objc_msgSendSuper
    LOOK_UP phoneSuperSendTarget
    ldr     x0, [x0]
    cbnz    x17, .Lcall_and_extend
    br      x16
END_OF_FUNCTION phone_objc_msgSendSuper

// Of the platform's methods with a small result, those that are called take all their arguments in registers.
FUNCTION phone_call_and_extend
.Lcall_and_extend:
    stp     x29, x30, [sp, #-32]!
    .cfi_def_cfa_offset 32
    .cfi_offset x29, -32
    .cfi_offset x30, -24
    mov     x29, sp
    str     x17, [sp, #16]
    blr     x16
    ldr     x17, [sp, #16]
    ldp     x29, x30, [sp], #32
    .cfi_restore x29
    .cfi_restore x30
    .cfi_def_cfa_offset 0
    cmp     x17, #2
    b.lo    1f
    b.eq    2f
    cmp     x17, #4
    b.lo    3f
    sxth    w0, w0
    ret
1:  uxtb    w0, w0
    ret
2:  sxtb    w0, w0
    ret
3:  uxth    w0, w0
    ret
END_OF_FUNCTION phone_call_and_extend

FUNCTION phone_send_to_nil
.Lsend_to_nil:
    mov     x0, #0
    mov     x1, #0
    movi    d0, #0
    movi    d1, #0
    movi    d2, #0
    movi    d3, #0
    ret
END_OF_FUNCTION phone_send_to_nil

// Variable arguments begin where the stack pointer points.
FUNCTION phoneStringWithFormat
    mov     x3, sp
    b       phoneStringWithFormatArguments
END_OF_FUNCTION phoneStringWithFormat

FUNCTION phoneLog
    mov     x1, sp
    b       phoneLogArguments
END_OF_FUNCTION phoneLog

    .section .note.GNU-stack, "", %progbits
