#include "platform/linux/gui/NotifierObject.h"

#include <utility>

#include <sdbus-c++/sdbus-c++.h>

#include "platform/ApplicationIdentifier.h"
#include "platform/XmlText.h"

namespace corvane {

NotifierObject::NotifierObject(sdbus::IConnection& connection, SharedContents contents,
                               const NotifierRequests& requests)
    : contents_(std::move(contents)),
      object_(sdbus::createObject(connection, path)),
      menu_(connection, contents_->menu, requests.choose) {
    registerTexts();
    registerImages();
    registerMethods(requests.activate);
    registerSignals();
    object_->finishRegistration();
}

void NotifierObject::registerTexts() {
    const std::pair<const char*, const char*> texts[] = {{"Category", "SystemServices"},
                                                         {"Id", applicationIdentifier},
                                                         {"Title", "Corvane"},
                                                         {"Status", "Active"},
                                                         {"IconName", ""},
                                                         {"OverlayIconName", ""},
                                                         {"AttentionIconName", ""},
                                                         {"AttentionMovieName", ""},
                                                         {"IconThemePath", ""}};
    for (const auto& [name, text] : texts) {
        object_->registerProperty(name).onInterface(interface).withGetter(
            [text = std::string(text)] { return text; });
    }
    object_->registerProperty("WindowId").onInterface(interface).withGetter([] { return std::int32_t{0}; });
    object_->registerProperty("ItemIsMenu").onInterface(interface).withGetter([] { return false; });
    object_->registerProperty("Menu").onInterface(interface).withGetter(
        [] { return sdbus::ObjectPath(NotifierMenu::path); });
}

void NotifierObject::registerImages() {
    object_->registerProperty("IconPixmap").onInterface(interface).withGetter([this] { return pixmaps(); });
    for (const char* none : {"OverlayIconPixmap", "AttentionIconPixmap"}) {
        object_->registerProperty(none).onInterface(interface).withGetter([] { return Pixmaps(); });
    }
    object_->registerProperty("ToolTip").onInterface(interface).withGetter([this] { return toolTip(); });
}

/// Hosts that show no menu of their own ask for one with `ContextMenu`: they get what a click gets.
void NotifierObject::registerMethods(const std::function<void(int x, int y)>& activate) {
    for (const char* click : {"Activate", "SecondaryActivate", "ContextMenu"}) {
        object_->registerMethod(click).onInterface(interface).withInputParamNames("x", "y").implementedAs(
            [activate](std::int32_t x, std::int32_t y) { activate(x, y); });
    }
    object_->registerMethod("Scroll")
        .onInterface(interface)
        .withInputParamNames("delta", "orientation")
        .implementedAs([](std::int32_t, const std::string&) {});
}

/// Hosts may want all of them to be there, though only the first two are ever sent.
void NotifierObject::registerSignals() {
    for (const char* change :
         {"NewIcon", "NewToolTip", "NewTitle", "NewAttentionIcon", "NewOverlayIcon", "NewMenu"}) {
        object_->registerSignal(change).onInterface(interface);
    }
    object_->registerSignal("NewStatus").onInterface(interface).withParameters<std::string>("status");
}

NotifierObject::Pixmaps NotifierObject::pixmaps() const {
    Pixmaps pixmaps;
    for (const NotifierPixmap& pixmap : contents_->pixmaps) {
        pixmaps.emplace_back(pixmap.width, pixmap.height, pixmap.argb);
    }
    return pixmaps;
}

/// Its text is markup.
NotifierObject::ToolTip NotifierObject::toolTip() const {
    return {std::string(), Pixmaps(), contents_->toolTipTitle, xmlText(contents_->toolTipText)};
}

void NotifierObject::show(SharedContents contents) {
    const SharedContents former = std::exchange(contents_, std::move(contents));
    if (former->pixmaps != contents_->pixmaps) {
        object_->emitSignal("NewIcon").onInterface(interface);
    }
    if (former->toolTipTitle != contents_->toolTipTitle || former->toolTipText != contents_->toolTipText) {
        object_->emitSignal("NewToolTip").onInterface(interface);
    }
    menu_.show(contents_->menu);
}

}  // namespace corvane
