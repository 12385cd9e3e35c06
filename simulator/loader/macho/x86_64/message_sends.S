// The phone's message sends on x86-64, in the System V calling convention, which the phone's simulator shares.
//
// Each looks the method up with the arguments kept aside and goes on in it with the arguments in place. For a result of
// less than 32 bits it comes back to extend it. A send to nil gives zero in every register that results come back in.

    .text

    .macro KEEP_ARGUMENTS
    pushq   %rbp
    .cfi_def_cfa_offset 16
    .cfi_offset %rbp, -16
    movq    %rsp, %rbp
    .cfi_def_cfa_register %rbp
    subq    $192, %rsp
    movq    %rdi, 0(%rsp)
    movq    %rsi, 8(%rsp)
    movq    %rdx, 16(%rsp)
    movq    %rcx, 24(%rsp)
    movq    %r8, 32(%rsp)
    movq    %r9, 40(%rsp)
    movq    %rax, 48(%rsp)
    movaps  %xmm0, 64(%rsp)
    movaps  %xmm1, 80(%rsp)
    movaps  %xmm2, 96(%rsp)
    movaps  %xmm3, 112(%rsp)
    movaps  %xmm4, 128(%rsp)
    movaps  %xmm5, 144(%rsp)
    movaps  %xmm6, 160(%rsp)
    movaps  %xmm7, 176(%rsp)
    .endm

    .macro BRING_ARGUMENTS_BACK
    movq    0(%rsp), %rdi
    movq    8(%rsp), %rsi
    movq    16(%rsp), %rdx
    movq    24(%rsp), %rcx
    movq    32(%rsp), %r8
    movq    40(%rsp), %r9
    movq    48(%rsp), %rax
    movaps  64(%rsp), %xmm0
    movaps  80(%rsp), %xmm1
    movaps  96(%rsp), %xmm2
    movaps  112(%rsp), %xmm3
    movaps  128(%rsp), %xmm4
    movaps  144(%rsp), %xmm5
    movaps  160(%rsp), %xmm6
    movaps  176(%rsp), %xmm7
    leave
    .cfi_restore %rbp
    .cfi_def_cfa %rsp, 8
    .endm

// Calls LOOK_UP with the receiver and the selector, and leaves the implementation in r11 and the extension in r10.
    .macro LOOK_UP function, receiver, selector
    KEEP_ARGUMENTS
    movq    \receiver, %r10
    movq    \selector, %rsi
    movq    %r10, %rdi
    call    \function
    movq    %rax, %r11
    movq    %rdx, %r10
    BRING_ARGUMENTS_BACK
    .endm

    .macro FUNCTION name
    .globl  \name
    .hidden \name
    .type   \name, @function
    .p2align 4
\name:
    .cfi_startproc
    .endm

    .macro END_OF_FUNCTION name
    .cfi_endproc
    .size   \name, . - \name
    .endm

FUNCTION phone_objc_msgSend
    testq   %rdi, %rdi
    je      .Lsend_to_nil
    LOOK_UP phoneSendTarget, %rdi, %rsi
    testq   %r10, %r10
    jne     .Lcall_and_extend
    jmp     *%r11
END_OF_FUNCTION phone_objc_msgSend

FUNCTION phone_objc_msgSendSuper
    LOOK_UP phoneSuperSendTarget, %rdi, %rsi
    movq    (%rdi), %rdi
    testq   %r10, %r10
    jne     .Lcall_and_extend
    jmp     *%r11
END_OF_FUNCTION phone_objc_msgSendSuper

// The place for the result comes first.
FUNCTION phone_objc_msgSend_stret
    testq   %rsi, %rsi
    je      .Lsend_to_nil_stret
    LOOK_UP phoneSendTarget, %rsi, %rdx
    jmp     *%r11
.Lsend_to_nil_stret:
    movq    %rdi, %rax
    ret
END_OF_FUNCTION phone_objc_msgSend_stret

FUNCTION phone_objc_msgSendSuper_stret
    LOOK_UP phoneSuperSendTarget, %rsi, %rdx
    movq    (%rsi), %rsi
    jmp     *%r11
END_OF_FUNCTION phone_objc_msgSendSuper_stret

// Of the platform's methods with a small result, those that are called take all their arguments in registers.
FUNCTION phone_call_and_extend
.Lcall_and_extend:
    pushq   %r10
    .cfi_adjust_cfa_offset 8
    call    *%r11
    popq    %r10
    .cfi_adjust_cfa_offset -8
    cmpq    $2, %r10
    jb      1f
    je      2f
    cmpq    $4, %r10
    jb      3f
    movswl  %ax, %eax
    ret
1:  movzbl  %al, %eax
    ret
2:  movsbl  %al, %eax
    ret
3:  movzwl  %ax, %eax
    ret
END_OF_FUNCTION phone_call_and_extend

FUNCTION phone_send_to_nil
.Lsend_to_nil:
    xorl    %eax, %eax
    xorl    %edx, %edx
    xorps   %xmm0, %xmm0
    xorps   %xmm1, %xmm1
    ret
END_OF_FUNCTION phone_send_to_nil

    .section .note.GNU-stack, "", %progbits
