#pragma once

#import <Foundation/Foundation.h>

typedef struct CGColor* CGColorRef;
typedef NSString* CALayerCornerCurve;

NS_ASSUME_NONNULL_BEGIN

NS_STRING_CONSTANT(CALayerCornerCurve, kCACornerCurveContinuous);

@interface CALayer : NSObject
@property CGFloat cornerRadius;
- (void)setCornerCurve:(CALayerCornerCurve)cornerCurve;
- (void)setBackgroundColor:(nullable CGColorRef)backgroundColor;
- (void)setBorderWidth:(CGFloat)borderWidth;
- (void)setBorderColor:(nullable CGColorRef)borderColor;
@end

NS_ASSUME_NONNULL_END
