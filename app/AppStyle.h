#pragma once

#include <QProxyStyle>

namespace vantrel {

// The style the application would have (the platform's, or the one the user asks for with -style
// or QT_STYLE_OVERRIDE), with one picture drawn instead of read: the chevron of the menu bar's
// overflow button. Every menu bar asks for it when it is made, and reading it from Qt's picture
// file loads each image-format plugin (and the JPEG library) into a window that shows no photos.
class AppStyle : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;

    QIcon standardIcon(StandardPixmap standardIcon, const QStyleOption* option = nullptr,
                       const QWidget* widget = nullptr) const override;
};

}  // namespace vantrel
