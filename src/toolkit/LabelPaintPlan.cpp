#include "toolkit/LabelPaintPlan.h"

#include "toolkit/LabelTextFlags.h"

LabelPaintPlan LabelPaintPlan::Make(const Look& look, const QRect& client, const QString& fullText,
                                    int textWidth) {
    LabelPaintPlan plan;
    const QString text = fullText.left(TextLimit);
    plan.offscreen = !look.transparent;

    QColor textColour = look.text;
    if (!look.transparent) {
        if (look.gradient) {
            plan.bands = LabelGradient::Bands(client, look.gradientStart, look.gradientEnd,
                                              LabelGradient::LabelBands);
        } else {
            plan.fill = look.userBrush.value_or(look.defaultBrush);
        }
        // Text blinking hides the text by painting it in the user brush's colour; a label
        // without a user brush does not blink visibly.
        if (look.userBrush.has_value() && look.textHidden)
            textColour = *look.userBrush;
    }

    plan.flags = LabelTextFlags::FromStyle(look.style, text);
    if (look.rotated) {
        plan.rotated = true;
        plan.rotatedOrigin =
            QPoint(client.left() + client.width() / 2, client.top() + client.height() / 2);
        plan.runs.push_back({client, textColour, text});
    } else {
        plan.runs.push_back({client, textColour, text});
        if (look.threeDText) {
            const QPoint shift = look.threeDSunken ? QPoint(1, 1) : QPoint(-1, -1);
            plan.runs.push_back({client.translated(shift), look.threeD, text});
        }
    }
    if (!look.suffix.isEmpty()) {
        QRect suffixRect = client;
        suffixRect.setLeft(client.left() + textWidth + look.suffixGap);
        plan.runs.push_back({suffixRect, look.suffixColour, look.suffix});
    }
    return plan;
}
