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
    <message id="tray.missing.title">
      <translation>Sorrel runs without an icon</translation>
    </message>
    <message id="tray.missing.text">
      <translation>This desktop has no tray. The hot keys work all the same, and so does the command “sorrel --history”. On GNOME the extension AppIndicator brings a tray.</translation>
    </message>
    <message id="commandLine.usage">
      <translation>Usage: sorrel [OPTION]</translation>
    </message>
    <message id="commandLine.about">
      <translation>Starts Sorrel in the tray. An option is passed to the Sorrel that is running, or acts once it has started.</translation>
    </message>
    <message id="commandLine.capture">
      <translation>capture a part of the screen, then show the history</translation>
    </message>
    <message id="commandLine.captureAndEdit">
      <translation>capture a part of the screen, then open it in the editor</translation>
    </message>
    <message id="commandLine.captureToClipboard">
      <translation>capture a part of the screen to the clipboard</translation>
    </message>
    <message id="commandLine.history">
      <translation>open or close the history</translation>
    </message>
    <message id="commandLine.settings">
      <translation>open the settings</translation>
    </message>
    <message id="commandLine.quit">
      <translation>quit the Sorrel that is running</translation>
    </message>
    <message id="commandLine.version">
      <translation>print the version</translation>
    </message>
    <message id="commandLine.help">
      <translation>print this help</translation>
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
    <message id="selection.refusal.title">
      <translation>Sorrel may not see the screen</translation>
    </message>
    <message id="selection.refusal.advice">
      <translation>You once refused it. Allow screenshots in the desktop’s settings under Apps, or let it ask again by this command: %1</translation>
    </message>
    <message id="editor.windowTitle">
      <translation>Sorrel Editor</translation>
    </message>
    <message id="editor.crop.apply">
      <translation>Crop</translation>
    </message>
    <message id="editor.cancel">
      <translation>Cancel</translation>
    </message>
    <message id="editor.save">
      <translation>Save</translation>
    </message>
    <message id="editor.tool.pen">
      <translation>Pen</translation>
    </message>
    <message id="editor.tool.blur">
      <translation>Blur</translation>
    </message>
    <message id="editor.tool.watermark">
      <translation>Watermark</translation>
    </message>
    <message id="editor.tool.crop">
      <translation>Crop</translation>
    </message>
    <message id="editor.zoom.out">
      <translation>Zoom out</translation>
    </message>
    <message id="editor.zoom.fit">
      <translation>Zoom to fit</translation>
    </message>
    <message id="editor.zoom.in">
      <translation>Zoom in</translation>
    </message>
    <message id="editor.undo.help">
      <translation>Undo</translation>
    </message>
    <message id="editor.pen.custom.help">
      <translation>Custom color</translation>
    </message>
    <message id="editor.pen.eyedropper.help">
      <translation>Pick a color from the screen</translation>
    </message>
    <message id="editor.pen.copyHex.help">
      <translation>Copy the color code</translation>
    </message>
    <message id="editor.pen.copied">
      <translation>Copied</translation>
    </message>
    <message id="editor.pen.saturationAndBrightness">
      <translation>Saturation and brightness</translation>
    </message>
    <message id="editor.pen.hue">
      <translation>Hue</translation>
    </message>
    <message id="editor.pen.width">
      <translation>Width %1</translation>
    </message>
    <message id="editor.pen.color.red">
      <translation>Red</translation>
    </message>
    <message id="editor.pen.color.orange">
      <translation>Orange</translation>
    </message>
    <message id="editor.pen.color.yellow">
      <translation>Yellow</translation>
    </message>
    <message id="editor.pen.color.green">
      <translation>Green</translation>
    </message>
    <message id="editor.pen.color.blue">
      <translation>Blue</translation>
    </message>
    <message id="editor.pen.color.white">
      <translation>White</translation>
    </message>
    <message id="editor.pen.color.black">
      <translation>Black</translation>
    </message>
    <message id="editor.blur.gaussian">
      <translation>Gaussian</translation>
    </message>
    <message id="editor.blur.mosaic">
      <translation>Mosaic</translation>
    </message>
    <message id="editor.blur.brush">
      <translation>Brush</translation>
    </message>
    <message id="editor.blur.area">
      <translation>Area</translation>
    </message>
    <message id="editor.blur.brushSize.help">
      <translation>Brush size</translation>
    </message>
    <message id="editor.blur.intensity.help">
      <translation>Blur intensity</translation>
    </message>
    <message id="editor.text.add">
      <translation>Add text</translation>
    </message>
    <message id="editor.text.edit">
      <translation>Edit text</translation>
    </message>
    <message id="editor.text.opacity.help">
      <translation>Text opacity</translation>
    </message>
    <message id="editor.text.size.help">
      <translation>Text size</translation>
    </message>
    <message id="editor.text.tracking.help">
      <translation>Letter spacing</translation>
    </message>
    <message id="editor.text.linespacing.help">
      <translation>Line spacing</translation>
    </message>
    <message id="editor.text.alignLeft">
      <translation>Align left</translation>
    </message>
    <message id="editor.text.alignCenter">
      <translation>Center</translation>
    </message>
    <message id="editor.text.alignRight">
      <translation>Align right</translation>
    </message>
    <message id="editor.text.clear.help">
      <translation>Clear text</translation>
    </message>
    <message id="editor.logo.opacity.help">
      <translation>Logo opacity</translation>
    </message>
    <message id="editor.logo.size.help">
      <translation>Logo size</translation>
    </message>
    <message id="editor.logo.add">
      <translation>Add logo</translation>
    </message>
    <message id="editor.logo.change">
      <translation>Change logo</translation>
    </message>
    <message id="editor.logo.pickFile">
      <translation>Choose a file…</translation>
    </message>
    <message id="editor.logo.pickMessage">
      <translation>Choose a picture for the logo</translation>
    </message>
    <message id="editor.logo.savedSection">
      <translation>Saved logos</translation>
    </message>
    <message id="editor.logo.clear.help">
      <translation>Remove logo</translation>
    </message>
    <message id="editor.fileSize.zero">
      <translation>Zero KB</translation>
    </message>
    <message id="editor.fileSize.byte">
      <translation>%1 byte</translation>
    </message>
    <message id="editor.fileSize.bytes">
      <translation>%1 bytes</translation>
    </message>
    <message id="editor.fileSize.kilobytes">
      <translation>%1 KB</translation>
    </message>
    <message id="editor.fileSize.megabytes">
      <translation>%1 MB</translation>
    </message>
    <message id="editor.fileSize.gigabytes">
      <translation>%1 GB</translation>
    </message>
    <message id="editor.fileSize.terabytes">
      <translation>%1 TB</translation>
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
    <message id="settings.title">
      <translation>Sorrel Settings</translation>
    </message>
    <message id="settings.tab.general">
      <translation>General</translation>
    </message>
    <message id="settings.tab.shortcuts">
      <translation>Shortcuts</translation>
    </message>
    <message id="settings.tab.watermark">
      <translation>Watermark</translation>
    </message>
    <message id="settings.tab.storage">
      <translation>Storage</translation>
    </message>
    <message id="settings.about.tagline">
      <translation>What was on your screen, bottled</translation>
    </message>
    <message id="settings.language.section">
      <translation>Language</translation>
    </message>
    <message id="settings.language">
      <translation>Interface language</translation>
    </message>
    <message id="settings.updates.section">
      <translation>Updates</translation>
    </message>
    <message id="settings.updates.autoDownload">
      <translation>Download updates automatically</translation>
    </message>
    <message id="settings.updates.autoDownload.desc">
      <translation>New versions are fetched in the background. You are asked before one is installed.</translation>
    </message>
    <message id="settings.updates.checkNow">
      <translation>Check for Updates…</translation>
    </message>
    <message id="settings.updates.checking">
      <translation>Checking for Updates…</translation>
    </message>
    <message id="settings.updates.downloading">
      <translation>Downloading Update…</translation>
    </message>
    <message id="settings.updates.none">
      <translation>This build has no updater: new versions come from where you installed it.</translation>
    </message>
    <message id="settings.startup.section">
      <translation>Startup</translation>
    </message>
    <message id="settings.startup.atLogin">
      <translation>Start Sorrel when you log in</translation>
    </message>
    <message id="settings.startup.failed">
      <translation>Starting at login couldn’t be changed</translation>
    </message>
    <message id="settings.shortcuts.section">
      <translation>Global shortcuts</translation>
    </message>
    <message id="settings.shortcuts.note">
      <translation>Click a field and press the new keys. Delete empties it, Escape cancels.</translation>
    </message>
    <message id="settings.shortcuts.layoutSwitch">
      <translation>Your keyboard’s layout is switched by the modifiers of %1, so these keys never reach Sorrel. Choose others.</translation>
    </message>
    <message id="settings.shortcuts.portal.note">
      <translation>Your desktop keeps these shortcuts. You can change them in its keyboard settings.</translation>
    </message>
    <message id="settings.shortcuts.portal.none">
      <translation>Not set</translation>
    </message>
    <message id="settings.shortcuts.portal.open">
      <translation>Open Keyboard Settings…</translation>
    </message>
    <message id="settings.shortcuts.sway.allow">
      <translation>Bind these shortcuts in sway</translation>
    </message>
    <message id="settings.shortcuts.sway.note">
      <translation>Here a program can’t take keys by itself; sway has to bind them. Sorrel’s bindings are there while it runs, and your configuration stays as it is.</translation>
    </message>
    <message id="settings.shortcuts.sway.taken">
      <translation>sway already uses %1 for something else, so Sorrel leaves it alone. Please choose another shortcut.</translation>
    </message>
    <message id="settings.shortcuts.gnome.allow">
      <translation>Add these to GNOME’s custom shortcuts</translation>
    </message>
    <message id="settings.shortcuts.gnome.note">
      <translation>Here a program can’t take keys by itself, but GNOME can start its commands. When you turn this off, only Sorrel’s own entries go.</translation>
    </message>
    <message id="settings.shortcuts.commands.note">
      <translation>On this desktop a program can’t take keys by itself. Give these commands their keys in the desktop’s own settings.</translation>
    </message>
    <message id="settings.shortcuts.commands.copy">
      <translation>Copy Command</translation>
    </message>
    <message id="settings.watermark.fontSection">
      <translation>Text</translation>
    </message>
    <message id="settings.watermark.font">
      <translation>Font</translation>
    </message>
    <message id="settings.watermark.systemFont">
      <translation>System font, bold</translation>
    </message>
    <message id="settings.watermark.preview">
      <translation>Preview</translation>
    </message>
    <message id="settings.watermark.previewSample">
      <translation>Sorrel watermark 2026</translation>
    </message>
    <message id="settings.watermark.rememberText">
      <translation>Begin with the last text</translation>
    </message>
    <message id="settings.watermark.resetFont">
      <translation>Use System Font</translation>
    </message>
    <message id="settings.watermark.logoSection">
      <translation>Logos</translation>
    </message>
    <message id="settings.watermark.logoEmpty">
      <translation>No logos yet. Those that you add can be chosen in the editor.</translation>
    </message>
    <message id="settings.watermark.addLogo">
      <translation>Add Logos…</translation>
    </message>
    <message id="settings.watermark.delete">
      <translation>Delete this logo</translation>
    </message>
    <message id="settings.watermark.pickLogoMessage">
      <translation>Choose pictures to use as logos</translation>
    </message>
    <message id="settings.storage.autoDeleteSection">
      <translation>Old screenshots</translation>
    </message>
    <message id="settings.storage.autoDeletePicker">
      <translation>Move to Trash</translation>
    </message>
    <message id="settings.storage.autoDelete.off">
      <translation>Never</translation>
    </message>
    <message id="settings.storage.autoDelete.days">
      <translation>After %1 days</translation>
    </message>
    <message id="settings.storage.autoDelete.onNote">
      <translation>Screenshots older than %1 days go to the Trash.</translation>
    </message>
    <message id="settings.storage.autoDelete.offNote">
      <translation>Screenshots stay until you delete them.</translation>
    </message>
    <message id="settings.storage.unreadable">
      <translation>Your settings file couldn’t be read, so what you chose isn’t known. For now nothing goes to the Trash by itself.</translation>
    </message>
    <message id="settings.storage.locationSection">
      <translation>Folder</translation>
    </message>
    <message id="settings.storage.currentFolder">
      <translation>Screenshots are saved in</translation>
    </message>
    <message id="settings.storage.changeFolder">
      <translation>Change Folder…</translation>
    </message>
    <message id="settings.storage.resetFolder">
      <translation>Use Default Folder</translation>
    </message>
    <message id="settings.storage.sharedWarning">
      <translation>Every picture in this folder counts as a screenshot, whoever put it there: it shows in the history, and moves to the Trash when it is old enough.</translation>
    </message>
    <message id="settings.storage.usePanelPrompt">
      <translation>Choose</translation>
    </message>
    <message id="settings.storage.usePanelMessage">
      <translation>Choose a folder for screenshots</translation>
    </message>
    <message id="settings.storage.confirmFolder.message">
      <translation>Save screenshots in this folder?</translation>
    </message>
    <message id="settings.storage.confirmFolder.use">
      <translation>Use This Folder</translation>
    </message>
    <message id="settings.storage.warningNormal1">
      <translation>Every picture in this folder will count as a screenshot. </translation>
    </message>
    <message id="settings.storage.warningDanger">
      <translation>Your own pictures there go to the Trash, too, when they are old enough.</translation>
    </message>
    <message id="settings.storage.warningNormal2">
      <translation> Screenshots taken so far stay where they are.</translation>
    </message>
    <message id="common.pictures">
      <translation>Pictures</translation>
    </message>
    <message id="updates.newer">
      <translation>Sorrel %1 is available</translation>
    </message>
    <message id="updates.newer.running">
      <translation>You have version %1.</translation>
    </message>
    <message id="updates.newer.ready">
      <translation>The new one is downloaded and ready to install.</translation>
    </message>
    <message id="updates.newer.forged">
      <translation>Its package isn’t signed by Sorrel’s makers and was deleted.</translation>
    </message>
    <message id="updates.newer.noPackage">
      <translation>Its package couldn’t be downloaded; the page has it.</translation>
    </message>
    <message id="updates.notes">
      <translation>What’s new</translation>
    </message>
    <message id="updates.notesLanguage">
      <translation>en</translation>
    </message>
    <message id="updates.install">
      <translation>Install…</translation>
    </message>
    <message id="updates.openPage">
      <translation>Open Page</translation>
    </message>
    <message id="updates.later">
      <translation>Later</translation>
    </message>
    <message id="updates.upToDate">
      <translation>Sorrel is up to date</translation>
    </message>
    <message id="updates.upToDate.running">
      <translation>Version %1 is the newest there is.</translation>
    </message>
    <message id="updates.failed">
      <translation>Couldn’t check for updates</translation>
    </message>
    <message id="updates.problem.unreachable">
      <translation>The update server can’t be reached. Check your network connection and try again.</translation>
    </message>
    <message id="updates.problem.insecure">
      <translation>The connection isn’t secure: the server couldn’t prove who it is.</translation>
    </message>
    <message id="updates.problem.redirected">
      <translation>The server sent the request on to a place that updates don’t come from.</translation>
    </message>
    <message id="updates.problem.refused">
      <translation>The server has no list of versions at present. Try again later.</translation>
    </message>
    <message id="updates.problem.tooLarge">
      <translation>The server’s answer is larger than a list of versions can be.</translation>
    </message>
    <message id="updates.problem.tooSlow">
      <translation>The server takes too long to answer. Try again later.</translation>
    </message>
    <message id="updates.problem.cutOff">
      <translation>The connection broke before the answer was complete. Try again.</translation>
    </message>
    <message id="updates.problem.forged">
      <translation>The list of versions isn’t signed by Sorrel’s makers, so it wasn’t used.</translation>
    </message>
    <message id="updates.problem.malformed">
      <translation>The answer isn’t a list of versions. Perhaps this network wants you to log in first.</translation>
    </message>
    <message id="updates.problem.unwritable">
      <translation>What the server sent couldn’t be stored.</translation>
    </message>
    <message id="updates.problem.outdated">
      <translation>The list of versions is older than one seen before, so it wasn’t used.</translation>
    </message>
    <message id="updates.problem.broken">
      <translation>The program that looks for updates is missing or damaged. Installing Sorrel again mends that.</translation>
    </message>
    <message id="common.ok">
      <translation>OK</translation>
    </message>
    <message id="common.cancel">
      <translation>Cancel</translation>
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
