#include "text/text_drawing.hpp"

#include "platform/UIKit/NSStringDrawing.hpp"
#include "platform/UIKit/UIColor.hpp"
#include "platform/UIKit/UIFont.hpp"
#include "platform/UIKit/UIGraphics.hpp"
#include "platform/runtime/Owned.hpp"

namespace {

UIImage* imageWithText(NSString* text, UIImage* image, CGPoint point)
{
    const Owned<NSString> keptText(text);
    const Owned<UIImage> keptImage(image);

    const CGSize size = image->size();
    UIGraphicsBeginImageContextWithOptions(size, NO, 0.0);
    image->drawInRect({{0, 0}, size});
    UIColor::whiteColor()->set();
    UIFont* const font = UIFont::boldSystemFontOfSize(16.0);
    const id objects[] = {font, UIColor::whiteColor()};
    const id keys[] = {NSFontAttributeName, NSForegroundColorAttributeName};
    NSDictionary* const attributes = NSDictionary::dictionaryWithObjects_forKeys_count(objects, keys, 2);
    NSStringDrawing::drawInRect_withAttributes(text, {point, size}, attributes);
    Owned<UIImage> result(UIGraphicsGetImageFromCurrentImageContext());
    UIGraphicsEndImageContext();
    return result.autorelease();
}

} // namespace

UIImage* drawTextInImage(NSString* text, UIImage* image, CGPoint point)
{
    return imageWithText(text, image, point);
}

UIImage* drawTextInImage2(NSString* text, UIImage* image, CGPoint point)
{
    return imageWithText(text, image, point);
}
