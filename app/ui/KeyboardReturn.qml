import QtQuick
import QtQuick.Templates as T

// Gives the keyboard back to what had it before a pop-up took it. As a pop-up closes, nothing has it, and the next Tab
// would begin at the top.
QtObject {
    property Item holder
    // How it came to the holder.
    property int reason

    function keep(item: Item) {
        const control = item as T.Control;
        holder = item;
        reason = control ? control.focusReason : Qt.OtherFocusReason;
    }

    // Unless something else has it by now.
    function giveBack() {
        if (holder && holder.enabled && holder.Window.activeFocusItem === holder.Window.contentItem)
            holder.forceActiveFocus(reason);
    }
}
