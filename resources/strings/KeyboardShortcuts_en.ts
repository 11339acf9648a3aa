<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
  <context>
    <name></name>
    <message id="record_shortcut">
      <translation>Record Shortcut</translation>
    </message>
    <message id="press_shortcut">
      <translation>Press Keys…</translation>
    </message>
    <message id="clear_shortcut">
      <translation>Clear Shortcut</translation>
    </message>
    <message id="recorder_help">
      <translation>Press the new keys. Backspace clears the shortcut; Escape leaves it as it is.</translation>
    </message>
    <message id="keyboard_shortcut_used_by_menu_item">
      <translation>This shortcut already belongs to the menu item “%1”. Please choose another one.</translation>
    </message>
    <message id="keyboard_shortcut_disallowed">
      <translation>This system doesn’t accept shortcuts with only Alt, or Alt and Shift. Please add Ctrl or the logo key.</translation>
    </message>
    <message id="keyboard_shortcut_used_by_system">
      <translation>This shortcut is already used by the system.</translation>
    </message>
    <message id="keyboard_shortcuts_can_be_changed">
      <translation>Most system shortcuts can be changed in the keyboard settings of your desktop.</translation>
    </message>
    <message id="ok">
      <translation>OK</translation>
    </message>
    <message id="force_use_shortcut">
      <translation>Use Anyway</translation>
    </message>
    <message id="space_key">
      <translation>Space</translation>
    </message>
    <message id="menu_key">
      <translation>Menu</translation>
    </message>
    <message id="print_screen_key">
      <translation>Print Screen</translation>
    </message>
    <message id="scroll_lock_key">
      <translation>Scroll Lock</translation>
    </message>
    <message id="pause_key">
      <translation>Pause</translation>
    </message>
  </context>
</TS>
