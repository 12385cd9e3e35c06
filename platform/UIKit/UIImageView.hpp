#pragma once

#include "platform/UIKit/UIImage.hpp"
#include "platform/UIKit/UIView.hpp"

/// A view that shows an image, scaled to fill its bounds.
class UIImageView : public UIView {
public:
    static UIImageView* alloc() { return send<"alloc", UIImageView*>(classNamed<"UIImageView">()); }
    UIImageView* initWithFrame(CGRect frame) { return send<"initWithFrame:", UIImageView*>(this, frame); }
    UIImage* image() const { return send<"image", UIImage*>(this); }
    void setImage(UIImage* image) { send<"setImage:">(this, image); }
};
