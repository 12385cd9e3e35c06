#include "simulator/springboard/views.hpp"

namespace simulator {

Owned<UILabel> whiteLabel(CGRect frame, UIFont* font)
{
    Owned<UILabel> label = adopt(UILabel::alloc()->initWithFrame(frame));
    label->setFont(font);
    label->setTextColor(UIColor::whiteColor());
    label->setBackgroundColor(UIColor::clearColor());
    return label;
}

} // namespace simulator
