<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko">
  <context>
    <name></name>
    <message id="record_shortcut">
      <translation>단축키 지정</translation>
    </message>
    <message id="press_shortcut">
      <translation>키를 누르세요…</translation>
    </message>
    <message id="clear_shortcut">
      <translation>단축키 지우기</translation>
    </message>
    <message id="recorder_help">
      <translation>새 단축키를 누르세요. Backspace 키를 누르면 지워지고, Esc 키를 누르면 그대로 남습니다.</translation>
    </message>
    <message id="keyboard_shortcut_used_by_menu_item">
      <translation>이미 메뉴 항목 “%1”에서 쓰는 단축키입니다. 다른 단축키를 선택하세요.</translation>
    </message>
    <message id="keyboard_shortcut_disallowed">
      <translation>이 시스템에서는 Alt나 Alt+Shift만 더한 단축키를 쓸 수 없습니다. Ctrl 키나 로고 키를 함께 누르세요.</translation>
    </message>
    <message id="keyboard_shortcut_used_by_system">
      <translation>이미 시스템에서 쓰는 단축키입니다.</translation>
    </message>
    <message id="keyboard_shortcuts_can_be_changed">
      <translation>시스템 단축키는 대부분 데스크톱의 키보드 설정에서 바꿀 수 있습니다.</translation>
    </message>
    <message id="ok">
      <translation>확인</translation>
    </message>
    <message id="force_use_shortcut">
      <translation>그래도 사용</translation>
    </message>
    <message id="space_key">
      <translation>스페이스</translation>
    </message>
    <message id="menu_key">
      <translation>메뉴</translation>
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
