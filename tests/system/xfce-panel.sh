#!/bin/sh
# A small XFCE desktop for whoever has an X server and a session bus: a window manager, and one panel at the top with
# a status tray at its right end. To be read by other scripts:
#
#   . xfce-panel.sh
#   start_xfce_panel FOLDER    # writes its configuration below the empty FOLDER; sets xfce_panel_pids
#   stop_xfce_panel
#
# Needs xfwm4, xfce4-panel and xfconfd, DISPLAY and DBUS_SESSION_BUS_ADDRESS. The panel is 32 pixels high. It is the
# watcher of status notifier items on the bus and the tray of the X server, a quarter of a second after its start.

write_xfce_panel_configuration() {
    mkdir -p "$1/config/xfce4/xfconf/xfce-perchannel-xml" "$1/cache" "$1/data"
    cat >"$1/config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml" <<'END'
<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="true"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="32"/>
      <property name="icon-size" type="uint" value="22"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
        <value type="int" value="3"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="tasklist"/>
    <property name="plugin-2" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-3" type="string" value="systray">
      <property name="square-icons" type="bool" value="false"/>
    </property>
  </property>
</channel>
END
}

# The panel asks for its configuration over the bus, from a service that the bus starts: with the bus's environment.
start_xfce_panel() {
    write_xfce_panel_configuration "$1"
    XDG_CONFIG_HOME="$1/config"
    XDG_CACHE_HOME="$1/cache"
    XDG_DATA_HOME="$1/data"
    export XDG_CONFIG_HOME XDG_CACHE_HOME XDG_DATA_HOME
    dbus-update-activation-environment DISPLAY XDG_CONFIG_HOME XDG_CACHE_HOME XDG_DATA_HOME 2>/dev/null
    xfwm4 --compositor=off >"$1/xfwm4.log" 2>&1 &
    xfce_panel_pids=$!
    xfce4-panel --disable-wm-check >"$1/xfce4-panel.log" 2>&1 &
    xfce_panel_pids="$xfce_panel_pids $!"
}

stop_xfce_panel() {
    # shellcheck disable=SC2086 # several numbers
    kill $xfce_panel_pids 2>/dev/null
    # shellcheck disable=SC2086
    wait $xfce_panel_pids 2>/dev/null
    xfce_panel_pids=
}
