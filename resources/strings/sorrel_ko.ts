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
    <message id="tray.missing.title">
      <translation>Sorrel이 아이콘 없이 실행 중입니다</translation>
    </message>
    <message id="tray.missing.text">
      <translation>이 데스크톱에는 트레이가 없습니다. 단축키와 ‘sorrel --history’ 명령은 그대로 쓸 수 있습니다. GNOME에서는 AppIndicator 확장을 설치하면 트레이가 생깁니다.</translation>
    </message>
    <message id="commandLine.usage">
      <translation>사용법: sorrel [옵션]</translation>
    </message>
    <message id="commandLine.about">
      <translation>트레이에서 Sorrel을 시작합니다. 이미 실행 중이면 옵션을 그쪽에 전달하고, 아니면 시작한 뒤 수행합니다.</translation>
    </message>
    <message id="commandLine.capture">
      <translation>화면 일부를 캡처하고 캡처 기록 열기</translation>
    </message>
    <message id="commandLine.captureAndEdit">
      <translation>화면 일부를 캡처해 편집기에서 열기</translation>
    </message>
    <message id="commandLine.captureToClipboard">
      <translation>화면 일부를 클립보드로 캡처</translation>
    </message>
    <message id="commandLine.history">
      <translation>캡처 기록 열기 또는 닫기</translation>
    </message>
    <message id="commandLine.settings">
      <translation>설정 열기</translation>
    </message>
    <message id="commandLine.quit">
      <translation>실행 중인 Sorrel 종료</translation>
    </message>
    <message id="commandLine.version">
      <translation>버전 표시</translation>
    </message>
    <message id="commandLine.help">
      <translation>이 도움말 표시</translation>
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
    <message id="selection.refusal.title">
      <translation>Sorrel이 화면을 볼 수 없습니다</translation>
    </message>
    <message id="selection.refusal.advice">
      <translation>이전에 허용하지 않은 상태입니다. 데스크톱 설정의 앱 항목에서 스크린샷을 허용하거나, 다음 명령으로 다시 묻게 하세요: %1</translation>
    </message>
    <message id="editor.windowTitle">
      <translation>Sorrel 편집기</translation>
    </message>
    <message id="editor.crop.apply">
      <translation>자르기 적용</translation>
    </message>
    <message id="editor.cancel">
      <translation>취소</translation>
    </message>
    <message id="editor.save">
      <translation>저장</translation>
    </message>
    <message id="editor.tool.pen">
      <translation>펜</translation>
    </message>
    <message id="editor.tool.blur">
      <translation>블러</translation>
    </message>
    <message id="editor.tool.watermark">
      <translation>워터마크</translation>
    </message>
    <message id="editor.tool.crop">
      <translation>자르기</translation>
    </message>
    <message id="editor.zoom.out">
      <translation>축소</translation>
    </message>
    <message id="editor.zoom.fit">
      <translation>창에 맞추기</translation>
    </message>
    <message id="editor.zoom.in">
      <translation>확대</translation>
    </message>
    <message id="editor.undo.help">
      <translation>실행 취소</translation>
    </message>
    <message id="editor.pen.custom.help">
      <translation>사용자 지정 색상</translation>
    </message>
    <message id="editor.pen.eyedropper.help">
      <translation>화면에서 색상 추출</translation>
    </message>
    <message id="editor.pen.copyHex.help">
      <translation>색상 코드 복사</translation>
    </message>
    <message id="editor.pen.copied">
      <translation>복사됨</translation>
    </message>
    <message id="editor.pen.saturationAndBrightness">
      <translation>채도와 밝기</translation>
    </message>
    <message id="editor.pen.hue">
      <translation>색조</translation>
    </message>
    <message id="editor.pen.width">
      <translation>굵기 %1</translation>
    </message>
    <message id="editor.pen.color.red">
      <translation>빨간색</translation>
    </message>
    <message id="editor.pen.color.orange">
      <translation>주황색</translation>
    </message>
    <message id="editor.pen.color.yellow">
      <translation>노란색</translation>
    </message>
    <message id="editor.pen.color.green">
      <translation>초록색</translation>
    </message>
    <message id="editor.pen.color.blue">
      <translation>파란색</translation>
    </message>
    <message id="editor.pen.color.white">
      <translation>흰색</translation>
    </message>
    <message id="editor.pen.color.black">
      <translation>검은색</translation>
    </message>
    <message id="editor.blur.gaussian">
      <translation>가우시안</translation>
    </message>
    <message id="editor.blur.mosaic">
      <translation>모자이크</translation>
    </message>
    <message id="editor.blur.brush">
      <translation>브러시</translation>
    </message>
    <message id="editor.blur.area">
      <translation>영역</translation>
    </message>
    <message id="editor.blur.brushSize.help">
      <translation>브러시 크기</translation>
    </message>
    <message id="editor.blur.intensity.help">
      <translation>블러 강도</translation>
    </message>
    <message id="editor.text.add">
      <translation>텍스트 추가</translation>
    </message>
    <message id="editor.text.edit">
      <translation>텍스트 편집</translation>
    </message>
    <message id="editor.text.opacity.help">
      <translation>텍스트 불투명도</translation>
    </message>
    <message id="editor.text.size.help">
      <translation>텍스트 크기</translation>
    </message>
    <message id="editor.text.tracking.help">
      <translation>자간</translation>
    </message>
    <message id="editor.text.linespacing.help">
      <translation>행간</translation>
    </message>
    <message id="editor.text.alignLeft">
      <translation>왼쪽 정렬</translation>
    </message>
    <message id="editor.text.alignCenter">
      <translation>가운데 정렬</translation>
    </message>
    <message id="editor.text.alignRight">
      <translation>오른쪽 정렬</translation>
    </message>
    <message id="editor.text.clear.help">
      <translation>텍스트 지우기</translation>
    </message>
    <message id="editor.logo.opacity.help">
      <translation>로고 불투명도</translation>
    </message>
    <message id="editor.logo.size.help">
      <translation>로고 크기</translation>
    </message>
    <message id="editor.logo.add">
      <translation>로고 추가</translation>
    </message>
    <message id="editor.logo.change">
      <translation>로고 변경</translation>
    </message>
    <message id="editor.logo.pickFile">
      <translation>파일 고르기…</translation>
    </message>
    <message id="editor.logo.pickMessage">
      <translation>로고로 쓸 그림 고르기</translation>
    </message>
    <message id="editor.logo.savedSection">
      <translation>저장된 로고</translation>
    </message>
    <message id="editor.logo.clear.help">
      <translation>로고 제거</translation>
    </message>
    <message id="editor.fileSize.zero">
      <translation>0KB</translation>
    </message>
    <message id="editor.fileSize.byte">
      <translation>%1바이트</translation>
    </message>
    <message id="editor.fileSize.bytes">
      <translation>%1바이트</translation>
    </message>
    <message id="editor.fileSize.kilobytes">
      <translation>%1KB</translation>
    </message>
    <message id="editor.fileSize.megabytes">
      <translation>%1MB</translation>
    </message>
    <message id="editor.fileSize.gigabytes">
      <translation>%1GB</translation>
    </message>
    <message id="editor.fileSize.terabytes">
      <translation>%1TB</translation>
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
    <message id="settings.title">
      <translation>Sorrel 설정</translation>
    </message>
    <message id="settings.tab.general">
      <translation>일반</translation>
    </message>
    <message id="settings.tab.shortcuts">
      <translation>단축키</translation>
    </message>
    <message id="settings.tab.watermark">
      <translation>워터마크</translation>
    </message>
    <message id="settings.tab.storage">
      <translation>저장</translation>
    </message>
    <message id="settings.about.tagline">
      <translation>화면에 있던 것을 병에 담아 둡니다</translation>
    </message>
    <message id="settings.language.section">
      <translation>언어</translation>
    </message>
    <message id="settings.language">
      <translation>화면 표시 언어</translation>
    </message>
    <message id="settings.updates.section">
      <translation>업데이트</translation>
    </message>
    <message id="settings.updates.autoDownload">
      <translation>업데이트 자동으로 내려받기</translation>
    </message>
    <message id="settings.updates.autoDownload.desc">
      <translation>새 버전을 미리 내려받아 두고, 설치하기 전에 물어봅니다.</translation>
    </message>
    <message id="settings.updates.checkNow">
      <translation>업데이트 확인…</translation>
    </message>
    <message id="settings.updates.checking">
      <translation>업데이트 확인 중…</translation>
    </message>
    <message id="settings.updates.downloading">
      <translation>업데이트 내려받는 중…</translation>
    </message>
    <message id="settings.updates.none">
      <translation>이 빌드에는 업데이트 기능이 없습니다. 설치한 곳에서 새 버전을 받으세요.</translation>
    </message>
    <message id="settings.startup.section">
      <translation>시작</translation>
    </message>
    <message id="settings.startup.atLogin">
      <translation>로그인할 때 Sorrel 시작</translation>
    </message>
    <message id="settings.startup.failed">
      <translation>로그인할 때 시작하는 설정을 바꾸지 못했습니다</translation>
    </message>
    <message id="settings.shortcuts.section">
      <translation>어디서나 쓰는 단축키</translation>
    </message>
    <message id="settings.shortcuts.note">
      <translation>칸을 누르고 새 단축키를 입력하세요. Delete 키로 비우고, Esc 키로 그대로 둡니다.</translation>
    </message>
    <message id="settings.shortcuts.layoutSwitch">
      <translation>%1의 보조 키는 키보드 배열을 바꾸는 데 쓰이므로 이 단축키가 Sorrel에 닿지 않습니다. 다른 키로 바꾸세요.</translation>
    </message>
    <message id="settings.shortcuts.portal.note">
      <translation>이 단축키는 데스크톱에서 관리합니다. 데스크톱의 키보드 설정에서 바꿀 수 있습니다.</translation>
    </message>
    <message id="settings.shortcuts.portal.none">
      <translation>지정 안 됨</translation>
    </message>
    <message id="settings.shortcuts.portal.open">
      <translation>키보드 설정 열기…</translation>
    </message>
    <message id="settings.shortcuts.sway.allow">
      <translation>sway에 이 단축키 등록</translation>
    </message>
    <message id="settings.shortcuts.sway.note">
      <translation>이 환경에서는 프로그램이 직접 키를 받을 수 없어 sway에 등록해야 합니다. Sorrel이 실행되는 동안에만 등록되며, 설정 파일은 바뀌지 않습니다.</translation>
    </message>
    <message id="settings.shortcuts.sway.taken">
      <translation>sway가 이미 다른 용도로 사용하는 단축키는 등록하지 않았습니다: %1. 다른 단축키를 지정하세요.</translation>
    </message>
    <message id="settings.shortcuts.gnome.allow">
      <translation>GNOME 사용자 지정 단축키에 추가</translation>
    </message>
    <message id="settings.shortcuts.gnome.note">
      <translation>이 환경에서는 프로그램이 직접 키를 받을 수 없어 GNOME이 대신 Sorrel을 실행합니다. 끄면 Sorrel이 추가한 항목만 지워집니다.</translation>
    </message>
    <message id="settings.shortcuts.commands.note">
      <translation>이 데스크톱에서는 프로그램이 직접 키를 받을 수 없습니다. 데스크톱 설정에서 원하는 키에 위 명령을 지정하세요.</translation>
    </message>
    <message id="settings.shortcuts.commands.copy">
      <translation>명령 복사</translation>
    </message>
    <message id="settings.watermark.fontSection">
      <translation>텍스트</translation>
    </message>
    <message id="settings.watermark.font">
      <translation>글꼴</translation>
    </message>
    <message id="settings.watermark.systemFont">
      <translation>시스템 글꼴(굵게)</translation>
    </message>
    <message id="settings.watermark.preview">
      <translation>미리보기</translation>
    </message>
    <message id="settings.watermark.previewSample">
      <translation>Sorrel 워터마크 2026</translation>
    </message>
    <message id="settings.watermark.rememberText">
      <translation>마지막에 쓴 텍스트로 시작</translation>
    </message>
    <message id="settings.watermark.resetFont">
      <translation>시스템 글꼴 사용</translation>
    </message>
    <message id="settings.watermark.logoSection">
      <translation>로고</translation>
    </message>
    <message id="settings.watermark.logoEmpty">
      <translation>아직 로고가 없습니다. 추가한 로고는 편집기에서 고를 수 있습니다.</translation>
    </message>
    <message id="settings.watermark.addLogo">
      <translation>로고 추가…</translation>
    </message>
    <message id="settings.watermark.delete">
      <translation>이 로고 삭제</translation>
    </message>
    <message id="settings.watermark.pickLogoMessage">
      <translation>로고로 쓸 그림 고르기</translation>
    </message>
    <message id="settings.storage.autoDeleteSection">
      <translation>오래된 스크린샷</translation>
    </message>
    <message id="settings.storage.autoDeletePicker">
      <translation>휴지통으로 이동</translation>
    </message>
    <message id="settings.storage.autoDelete.off">
      <translation>안 함</translation>
    </message>
    <message id="settings.storage.autoDelete.days">
      <translation>%1일 뒤</translation>
    </message>
    <message id="settings.storage.autoDelete.onNote">
      <translation>%1일이 지난 스크린샷은 휴지통으로 갑니다.</translation>
    </message>
    <message id="settings.storage.autoDelete.offNote">
      <translation>스크린샷을 직접 지울 때까지 그대로 둡니다.</translation>
    </message>
    <message id="settings.storage.unreadable">
      <translation>설정 파일을 읽지 못해 선택한 값을 알 수 없습니다. 지금은 아무것도 저절로 휴지통에 보내지 않습니다.</translation>
    </message>
    <message id="settings.storage.locationSection">
      <translation>폴더</translation>
    </message>
    <message id="settings.storage.currentFolder">
      <translation>스크린샷을 저장하는 곳</translation>
    </message>
    <message id="settings.storage.changeFolder">
      <translation>폴더 변경…</translation>
    </message>
    <message id="settings.storage.resetFolder">
      <translation>기본 폴더 사용</translation>
    </message>
    <message id="settings.storage.sharedWarning">
      <translation>이 폴더의 그림은 누가 넣었든 모두 스크린샷으로 여깁니다. 캡처 기록에 나타나고, 오래되면 휴지통으로 갑니다.</translation>
    </message>
    <message id="settings.storage.usePanelPrompt">
      <translation>선택</translation>
    </message>
    <message id="settings.storage.usePanelMessage">
      <translation>스크린샷을 저장할 폴더 고르기</translation>
    </message>
    <message id="settings.storage.confirmFolder.message">
      <translation>이 폴더에 스크린샷을 저장할까요?</translation>
    </message>
    <message id="settings.storage.confirmFolder.use">
      <translation>이 폴더 사용</translation>
    </message>
    <message id="settings.storage.warningNormal1">
      <translation>이 폴더의 모든 그림을 스크린샷으로 여기게 됩니다. </translation>
    </message>
    <message id="settings.storage.warningDanger">
      <translation>원래 있던 그림도 오래되면 휴지통으로 갑니다.</translation>
    </message>
    <message id="settings.storage.warningNormal2">
      <translation> 지금까지의 스크린샷은 있던 곳에 남습니다.</translation>
    </message>
    <message id="common.pictures">
      <translation>그림</translation>
    </message>
    <message id="updates.newer">
      <translation>Sorrel %1 버전이 나왔습니다</translation>
    </message>
    <message id="updates.newer.running">
      <translation>지금 쓰는 버전은 %1입니다.</translation>
    </message>
    <message id="updates.newer.ready">
      <translation>새 버전을 내려받아 두었으니 바로 설치할 수 있습니다.</translation>
    </message>
    <message id="updates.newer.forged">
      <translation>내려받은 패키지에 Sorrel 제작자의 서명이 없어 삭제했습니다.</translation>
    </message>
    <message id="updates.newer.noPackage">
      <translation>패키지를 내려받지 못했습니다. 웹 페이지에서 받을 수 있습니다.</translation>
    </message>
    <message id="updates.notes">
      <translation>새로운 기능</translation>
    </message>
    <message id="updates.notesLanguage">
      <translation>ko</translation>
    </message>
    <message id="updates.install">
      <translation>설치…</translation>
    </message>
    <message id="updates.openPage">
      <translation>웹 페이지 열기</translation>
    </message>
    <message id="updates.later">
      <translation>나중에</translation>
    </message>
    <message id="updates.upToDate">
      <translation>최신 버전을 쓰고 있습니다</translation>
    </message>
    <message id="updates.upToDate.running">
      <translation>지금 쓰는 %1 버전이 가장 새로운 버전입니다.</translation>
    </message>
    <message id="updates.failed">
      <translation>업데이트를 확인하지 못했습니다</translation>
    </message>
    <message id="updates.problem.unreachable">
      <translation>업데이트 서버에 연결할 수 없습니다. 네트워크 연결을 확인하고 다시 시도해 주세요.</translation>
    </message>
    <message id="updates.problem.insecure">
      <translation>안전한 연결이 아닙니다. 서버의 신원을 확인할 수 없습니다.</translation>
    </message>
    <message id="updates.problem.redirected">
      <translation>서버가 업데이트를 받을 수 없는 주소로 요청을 넘겼습니다.</translation>
    </message>
    <message id="updates.problem.refused">
      <translation>지금은 서버에 버전 목록이 없습니다. 나중에 다시 시도해 주세요.</translation>
    </message>
    <message id="updates.problem.tooLarge">
      <translation>서버에서 받은 내용이 버전 목록이라기에는 너무 큽니다.</translation>
    </message>
    <message id="updates.problem.tooSlow">
      <translation>서버의 응답이 너무 느립니다. 나중에 다시 시도해 주세요.</translation>
    </message>
    <message id="updates.problem.cutOff">
      <translation>내용을 다 받기 전에 연결이 끊어졌습니다. 다시 시도해 주세요.</translation>
    </message>
    <message id="updates.problem.forged">
      <translation>버전 목록에 Sorrel 제작자의 서명이 없어 사용하지 않았습니다.</translation>
    </message>
    <message id="updates.problem.malformed">
      <translation>서버에서 받은 내용이 버전 목록이 아닙니다. 네트워크에 먼저 로그인해야 할 수 있습니다.</translation>
    </message>
    <message id="updates.problem.unwritable">
      <translation>서버에서 받은 내용을 저장하지 못했습니다.</translation>
    </message>
    <message id="updates.problem.outdated">
      <translation>전에 받은 것보다 오래된 버전 목록이라 사용하지 않았습니다.</translation>
    </message>
    <message id="updates.problem.broken">
      <translation>업데이트를 확인하는 프로그램이 없거나 손상되었습니다. Sorrel을 다시 설치해 주세요.</translation>
    </message>
    <message id="common.ok">
      <translation>확인</translation>
    </message>
    <message id="common.cancel">
      <translation>취소</translation>
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
      <translation>병이 비어 있습니다</translation>
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
