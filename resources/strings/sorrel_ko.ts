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
    <message id="menu.toolTip.empty">
      <translation>Sorrel: 병이 비어 있습니다</translation>
    </message>
    <message id="menu.toolTip.one">
      <translation>Sorrel: 병에 스크린샷 %1장</translation>
    </message>
    <message id="menu.toolTip.many">
      <translation>Sorrel: 병에 스크린샷 %1장</translation>
    </message>
    <message id="clipboard.copied.quillon">
      <translation>Quillon에 복사했습니다</translation>
    </message>
    <message id="clipboard.copied.plain">
      <translation>복사했습니다</translation>
    </message>
    <message id="clipboard.failed">
      <translation>복사하지 못했습니다</translation>
    </message>
    <message id="selection.hint.space">
      <translation>영역 또는 창</translation>
    </message>
    <message id="selection.hint.escape">
      <translation>취소</translation>
    </message>
    <message id="editor.windowTitle">
      <translation>Sorrel 편집기</translation>
    </message>
    <message id="editor.crop.apply">
      <translation>자르기 적용</translation>
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
    <message id="history.title">
      <translation>캡처 기록</translation>
    </message>
    <message id="history.count.one">
      <translation>그림 1장</translation>
    </message>
    <message id="history.count">
      <translation>그림 %1장</translation>
    </message>
    <message id="history.lock.lockedHelp">
      <translation>고정됨. 누르면 고정을 풉니다</translation>
    </message>
    <message id="history.lock.unlockedHelp">
      <translation>다른 곳을 눌러도 열어 둡니다</translation>
    </message>
    <message id="history.close">
      <translation>닫기</translation>
    </message>
    <message id="history.empty.title">
      <translation>병이 비어 있어요</translation>
    </message>
    <message id="history.empty.hint">
      <translation>화면을 캡처하면 여기에 담깁니다.</translation>
    </message>
    <message id="history.settings">
      <translation>설정</translation>
    </message>
    <message id="history.thumb.help">
      <translation>두 번 눌러 편집하거나 다른 프로그램으로 끌어 놓으세요</translation>
    </message>
    <message id="history.thumb.edit">
      <translation>편집</translation>
    </message>
    <message id="history.thumb.copy">
      <translation>복사</translation>
    </message>
    <message id="history.thumb.delete">
      <translation>휴지통으로 이동</translation>
    </message>
    <message id="history.date.now">
      <translation>방금</translation>
    </message>
    <message id="history.date.minute">
      <translation>%1분 전</translation>
    </message>
    <message id="history.date.minutes">
      <translation>%1분 전</translation>
    </message>
    <message id="history.date.hour">
      <translation>%1시간 전</translation>
    </message>
    <message id="history.date.hours">
      <translation>%1시간 전</translation>
    </message>
    <message id="history.date.day">
      <translation>%1일 전</translation>
    </message>
    <message id="history.date.days">
      <translation>%1일 전</translation>
    </message>
    <message id="history.date.week">
      <translation>%1주 전</translation>
    </message>
    <message id="history.date.weeks">
      <translation>%1주 전</translation>
    </message>
    <message id="history.date.month">
      <translation>%1개월 전</translation>
    </message>
    <message id="history.date.months">
      <translation>%1개월 전</translation>
    </message>
    <message id="history.date.year">
      <translation>%1년 전</translation>
    </message>
    <message id="history.date.years">
      <translation>%1년 전</translation>
    </message>
    <message id="clipboard.quillon.promo">
      <translation>복사한 것을 간직하는 Quillon을 만나 보세요. 다시 누르면 복사합니다.</translation>
    </message>
  </context>
</TS>
