#include "window/captions.h"

namespace veltrix {

QString ToText(const std::string& text) {
    return QString::fromStdString(text);
}

QString ReadableCaption(const std::string& caption) {
    return ToText(caption).replace(QLatin1String("&&"), QLatin1String("&"));
}

QString WithoutMnemonics(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString PlainToolTip(const std::string& text) {
    return text.empty() ? QString()
                        : QLatin1String("<qt>") + ToText(text).toHtmlEscaped() + QLatin1String("</qt>");
}

}  // namespace veltrix
