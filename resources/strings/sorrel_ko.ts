<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko">
  <context>
    <name></name>
    <message id="menu.openHistory">
      <translation>캡처 기록 열기</translation>
    </message>
    <message id="menu.settings">
      <translation>설정…</translation>
    </message>
    <message id="menu.checkForUpdates">
      <translation>업데이트 확인…</translation>
    </message>
    <message id="menu.openBottleFolder">
      <translation>병 폴더 열기</translation>
    </message>
    <message id="menu.quit">
      <translation>Sorrel 종료</translation>
    </message>
    <message id="clipboard.copied.quillon">
      <translation>Quillon에 복사했습니다</translation>
    </message>
    <message id="clipboard.copied.plain">
      <translation>복사했습니다</translation>
    </message>
    <message id="settings.language.system">
      <translation>시스템</translation>
    </message>
    <message id="settings.language.korean">
      <translation>한국어</translation>
    </message>
    <message id="settings.language.english">
      <translation>English</translation>
    </message>
    <message id="settings.shortcuts.normal">
      <translation>캡처하고 기록 보기</translation>
    </message>
    <message id="settings.shortcuts.feature">
      <translation>캡처하고 편집하기</translation>
    </message>
    <message id="settings.shortcuts.clipboard">
      <translation>클립보드로 캡처하기</translation>
    </message>
    <message id="settings.shortcuts.openHistory">
      <translation>캡처 기록 열고 닫기</translation>
    </message>
  </context>
</TS>
