#pragma once

/// One type of an encoding, as far as it tells how a value travels.
struct EncodedType {
    /// Its letter, the same for all types that travel alike; 0 at the end.
    char letter;
    /// Of an array's members, or a bit field's bits.
    unsigned count;

    bool operator==(const EncodedType&) const = default;
};

/// Reads an encoding ("Type Encodings", Objective-C Runtime Programming Guide) type by type. A struct gives its braces and its
/// members.
///
/// What says nothing about how a value travels is passed over: where an argument lies in the frame, the qualifiers (const, in,
/// out, by copy, one way, ...), and the names of structs, of their members and of objects' classes. These travel alike:
///   - c, C and B: each is the BOOL of some system
///   - l and i, L and I: both have 32 bits in an encoding
///   - @, # and @?: an object, a class, a block
///   - *, ^ and whatever it points to: a pointer. The pointer to a struct is told from others, since Core Foundation's types
///     are declared as such and are objects.
class EncodingReader {
public:
    constexpr explicit EncodingReader(const char* encoding) : at_(encoding) {}

    constexpr EncodedType next()
    {
        while (isIn(*at_, "rnNoORVA+-") || isDigit(*at_) || *at_ == '"')
            skipSilent();
        if (*at_ == 0)
            return {0, 0};
        const char letter = *at_++;
        switch (letter) {
        case 'c':
        case 'C':
            return {'B', 0};
        case 'l':
            return {'i', 0};
        case 'L':
            return {'I', 0};
        case '#':
            return {'@', 0};
        case '@':
            if (*at_ == '?')
                ++at_;
            return {'@', 0};
        case '*':
            return {pointer, 0};
        case '^':
            return pointee();
        case '{':
        case '(':
            skipName();
            return {letter, 0};
        case '[':
        case 'b':
            return {letter, number()};
        default:
            return {letter, 0};
        }
    }

    static constexpr char pointer = '^';
    static constexpr char pointerToStruct = '&';

private:
    static constexpr bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }
    static constexpr bool isIn(char letter, const char* letters)
    {
        while (*letters != 0 && *letters != letter)
            ++letters;
        return *letters != 0;
    }

    constexpr void skipSilent()
    {
        if (*at_++ != '"')
            return;
        while (*at_ != 0 && *at_ != '"')
            ++at_;
        if (*at_ == '"')
            ++at_;
    }
    constexpr void skipName()
    {
        while (*at_ != 0 && !isIn(*at_, "=})"))
            ++at_;
        if (*at_ == '=')
            ++at_;
    }
    constexpr unsigned number()
    {
        unsigned value = 0;
        while (isDigit(*at_))
            value = value * 10 + static_cast<unsigned>(*at_++ - '0');
        return value;
    }
    /// Reads past what a pointer points to.
    constexpr EncodedType pointee()
    {
        const EncodedType first = next();
        unsigned depth = 0;
        for (EncodedType type = first; type.letter != 0; type = next()) {
            if (isIn(type.letter, "{(["))
                ++depth;
            else if (isIn(type.letter, "})]"))
                --depth;
            if (depth == 0)
                break;
        }
        return {first.letter == '{' ? pointerToStruct : pointer, 0};
    }

    const char* at_;
};

/// Whether a message that is sent by the one encoding reaches a method that declares the other: whether both put their result,
/// their receiver and each argument in the same place, at the same width. Types of one width that differ in sign or kind (int
/// and unsigned, long and double) disagree too, and so do structs whose members do.
constexpr bool encodingsAgree(const char* sent, const char* declared)
{
    EncodingReader left(sent);
    EncodingReader right(declared);
    const auto isPointerToStructFor = [](EncodedType type, EncodedType other) {
        return type.letter == EncodingReader::pointerToStruct && (other.letter == '@' || other.letter == EncodingReader::pointer);
    };
    for (;;) {
        const EncodedType a = left.next();
        const EncodedType b = right.next();
        if (a != b && !isPointerToStructFor(a, b) && !isPointerToStructFor(b, a))
            return false;
        if (a.letter == 0)
            return true;
    }
}
