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
    <message id="menu.toolTip.empty">
      <translation>Sorrel: the bottle is empty</translation>
    </message>
    <message id="menu.toolTip.one">
      <translation>Sorrel: %1 screenshot in the bottle</translation>
    </message>
    <message id="menu.toolTip.many">
      <translation>Sorrel: %1 screenshots in the bottle</translation>
    </message>
    <message id="clipboard.copied.quillon">
      <translation>Copied to Quillon</translation>
    </message>
    <message id="clipboard.copied.plain">
      <translation>Copied</translation>
    </message>
    <message id="clipboard.failed">
      <translation>Couldn’t copy</translation>
    </message>
    <message id="selection.hint.space">
      <translation>Area or window</translation>
    </message>
    <message id="selection.hint.escape">
      <translation>Cancel</translation>
    </message>
    <message id="editor.windowTitle">
      <translation>Sorrel Editor</translation>
    </message>
    <message id="editor.crop.apply">
      <translation>Crop</translation>
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
    <message id="history.title">
      <translation>History</translation>
    </message>
    <message id="history.count.one">
      <translation>1 picture</translation>
    </message>
    <message id="history.count">
      <translation>%1 pictures</translation>
    </message>
    <message id="history.lock.lockedHelp">
      <translation>Stays open; click to let it close by itself</translation>
    </message>
    <message id="history.lock.unlockedHelp">
      <translation>Keep open when you click elsewhere</translation>
    </message>
    <message id="history.close">
      <translation>Close</translation>
    </message>
    <message id="history.empty.title">
      <translation>The bottle is empty</translation>
    </message>
    <message id="history.empty.hint">
      <translation>Take a screenshot and it lands here.</translation>
    </message>
    <message id="history.settings">
      <translation>Settings</translation>
    </message>
    <message id="history.thumb.help">
      <translation>Double-click to edit; drag into another program</translation>
    </message>
    <message id="history.thumb.edit">
      <translation>Edit</translation>
    </message>
    <message id="history.thumb.copy">
      <translation>Copy</translation>
    </message>
    <message id="history.thumb.delete">
      <translation>Move to Trash</translation>
    </message>
    <message id="history.date.now">
      <translation>Just now</translation>
    </message>
    <message id="history.date.minute">
      <translation>%1 minute ago</translation>
    </message>
    <message id="history.date.minutes">
      <translation>%1 minutes ago</translation>
    </message>
    <message id="history.date.hour">
      <translation>%1 hour ago</translation>
    </message>
    <message id="history.date.hours">
      <translation>%1 hours ago</translation>
    </message>
    <message id="history.date.day">
      <translation>%1 day ago</translation>
    </message>
    <message id="history.date.days">
      <translation>%1 days ago</translation>
    </message>
    <message id="history.date.week">
      <translation>%1 week ago</translation>
    </message>
    <message id="history.date.weeks">
      <translation>%1 weeks ago</translation>
    </message>
    <message id="history.date.month">
      <translation>%1 month ago</translation>
    </message>
    <message id="history.date.months">
      <translation>%1 months ago</translation>
    </message>
    <message id="history.date.year">
      <translation>%1 year ago</translation>
    </message>
    <message id="history.date.years">
      <translation>%1 years ago</translation>
    </message>
    <message id="clipboard.quillon.promo">
      <translation>Quillon keeps what you copy. Press again to copy.</translation>
    </message>
  </context>
</TS>
