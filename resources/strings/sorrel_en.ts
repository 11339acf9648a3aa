<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
  <context>
    <name></name>
    <message id="menu.openHistory">
      <translation>Open History</translation>
    </message>
    <message id="menu.settings">
      <translation>Settings…</translation>
    </message>
    <message id="menu.checkForUpdates">
      <translation>Check for Updates…</translation>
    </message>
    <message id="menu.openBottleFolder">
      <translation>Open Bottle Folder</translation>
    </message>
    <message id="menu.quit">
      <translation>Quit Sorrel</translation>
    </message>
    <message id="clipboard.copied.quillon">
      <translation>Copied to Quillon</translation>
    </message>
    <message id="clipboard.copied.plain">
      <translation>Copied</translation>
    </message>
    <message id="settings.language.system">
      <translation>System</translation>
    </message>
    <message id="settings.language.korean">
      <translation>한국어</translation>
    </message>
    <message id="settings.language.english">
      <translation>English</translation>
    </message>
    <message id="settings.shortcuts.normal">
      <translation>Capture, then show history</translation>
    </message>
    <message id="settings.shortcuts.feature">
      <translation>Capture, then edit</translation>
    </message>
    <message id="settings.shortcuts.clipboard">
      <translation>Capture to clipboard</translation>
    </message>
    <message id="settings.shortcuts.openHistory">
      <translation>Show or hide history</translation>
    </message>
  </context>
</TS>
