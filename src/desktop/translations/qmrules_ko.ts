<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>HelpPages</name>
    <message>
        <source>Check or uncheck the node</source>
        <translation>노드 선택 표시 켜기/끄기</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Space</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>삭제</translation>
    </message>
    <message>
        <source>Del</source>
        <translation>Del</translation>
    </message>
    <message>
        <source>Check all</source>
        <translation>모두 선택 표시</translation>
    </message>
    <message>
        <source>Ctrl+A</source>
        <translation>Ctrl+A</translation>
    </message>
    <message>
        <source>Uncheck all</source>
        <translation>모두 선택 표시 해제</translation>
    </message>
    <message>
        <source>Ctrl+U</source>
        <translation>Ctrl+U</translation>
    </message>
    <message>
        <source>Open the popup menu</source>
        <translation>팝업 메뉴 열기</translation>
    </message>
    <message>
        <source>Shift+F10</source>
        <translation>Shift+F10</translation>
    </message>
    <message>
        <source>Select whole rows</source>
        <translation>행 전체 선택</translation>
    </message>
    <message>
        <source>Shift+Up, Shift+Down</source>
        <translation>Shift+↑, Shift+↓</translation>
    </message>
    <message>
        <source>Select rows with the mouse</source>
        <translation>마우스로 행 선택</translation>
    </message>
    <message>
        <source>Click and drag on the row numbers</source>
        <translation>행 번호를 클릭하여 끌기</translation>
    </message>
    <message>
        <source>Cancel work that takes long</source>
        <translation>오래 걸리는 작업 취소</translation>
    </message>
    <message>
        <source>Esc</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Next or previous field</source>
        <translation>다음 또는 이전 필드</translation>
    </message>
    <message>
        <source>Tab, Shift+Tab</source>
        <translation>Tab, Shift+Tab</translation>
    </message>
    <message>
        <source>Keyboard</source>
        <translation>키보드</translation>
    </message>
    <message>
        <source>What it does</source>
        <translation>동작</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>키</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>창</translation>
    </message>
    <message>
        <source>Tree of the rules</source>
        <translation>규칙 트리</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>소스</translation>
    </message>
    <message>
        <source>Everywhere</source>
        <translation>공통</translation>
    </message>
    <message>
        <source>About</source>
        <translation>정보</translation>
    </message>
    <message>
        <source>QMRules Workbench %1</source>
        <translation>QMRules Workbench %1</translation>
    </message>
    <message>
        <source>The catalogue of the business rules of legacy programs.

Made with Qt %1, SQLite and libxml2.</source>
        <translation>레거시 프로그램의 비즈니스 규칙 카탈로그입니다.

Qt %1, SQLite 및 libxml2를 사용합니다.</translation>
    </message>
</context>
<context>
    <name>Options</name>
    <message>
        <source>A line of the list is empty.</source>
        <translation>목록에 빈 줄이 있습니다.</translation>
    </message>
    <message>
        <source>“%1” stands in the list twice.</source>
        <translation>“%1”이(가) 목록에 두 번 있습니다.</translation>
    </message>
    <message>
        <source>“%1” is no template: each “[” needs its “]”, and a range goes upwards, as in [A-F].</source>
        <translation>“%1”은(는) 올바른 템플릿이 아닙니다. “[”에는 짝이 되는 “]”가 있어야 하고, 범위는 [A-F]처럼 오름차순이어야 합니다.</translation>
    </message>
    <message>
        <source>“%1” is named from the root of the disk; name it relative to the workspace.</source>
        <translation>“%1”은(는) 절대 경로입니다. 작업 영역 기준의 상대 경로로 지정하십시오.</translation>
    </message>
    <message>
        <source>“%1” lies outside the workspace; copy it into the workspace.</source>
        <translation>“%1”은(는) 작업 영역 밖에 있습니다. 작업 영역 안으로 복사하십시오.</translation>
    </message>
    <message>
        <source>The text holds a control character; type it anew.</source>
        <translation>텍스트에 제어 문자가 들어 있습니다. 다시 입력하십시오.</translation>
    </message>
    <message>
        <source>Enter a name.</source>
        <translation>이름을 입력하십시오.</translation>
    </message>
    <message>
        <source>The name has blanks around it; take them away.</source>
        <translation>이름의 앞뒤에 공백이 있습니다. 공백을 없애십시오.</translation>
    </message>
    <message>
        <source>Unassigned Rules</source>
        <translation>할당되지 않은 규칙</translation>
    </message>
    <message>
        <source>Rule Validation</source>
        <translation>규칙 검증</translation>
    </message>
    <message>
        <source>Detection</source>
        <translation>감지</translation>
    </message>
    <message>
        <source>Rule Export</source>
        <translation>규칙 내보내기</translation>
    </message>
    <message>
        <source>COBOL Sources</source>
        <translation>COBOL 소스</translation>
    </message>
    <message>
        <source>Components</source>
        <translation>구성 요소</translation>
    </message>
    <message>
        <source>Mark it invalid, and leave the segment as it is</source>
        <translation>무효로 표시하고 세그먼트는 그대로 둡니다</translation>
    </message>
    <message>
        <source>Take its segment away</source>
        <translation>세그먼트를 없앱니다</translation>
    </message>
    <message>
        <source>Look for the text in the file, and move the segment there</source>
        <translation>파일에서 텍스트를 찾아 세그먼트를 그곳으로 옮깁니다</translation>
    </message>
    <message>
        <source>Nothing else</source>
        <translation>아무것도 더하지 않음</translation>
    </message>
    <message>
        <source>The rule sets that the rules trigger, with their rules, and so on from there</source>
        <translation>규칙이 트리거하는 규칙 집합과 그 규칙, 그리고 그 이후의 모든 것</translation>
    </message>
    <message>
        <source>Told from each file</source>
        <translation>파일마다 자동으로 판별</translation>
    </message>
    <message>
        <source>Fixed: text in columns 8 to 72</source>
        <translation>고정: 8~72열이 텍스트</translation>
    </message>
    <message>
        <source>Wide: text from column 8 to the end of the line</source>
        <translation>넓은 형식: 8열부터 줄 끝까지가 텍스트</translation>
    </message>
    <message>
        <source>Free: text anywhere on the line</source>
        <translation>자유 형식: 줄의 어느 위치든 텍스트</translation>
    </message>
    <message>
        <source>Business function for rules without one</source>
        <translation>비즈니스 기능이 없는 규칙의 비즈니스 기능</translation>
    </message>
    <message>
        <source>Rules that are made without a place of their own go to this function, which is made when it is first needed. A new name holds from the next start on; a function that stands under the old name stays as it is.</source>
        <translation>위치를 지정하지 않고 만든 규칙은 이 비즈니스 기능에 들어갑니다. 이 기능은 처음 필요할 때 만들어집니다. 새 이름은 다음 시작부터 적용되며, 이전 이름의 기능은 그대로 남습니다.</translation>
    </message>
    <message>
        <source>Description of this business function</source>
        <translation>이 비즈니스 기능의 설명</translation>
    </message>
    <message>
        <source>The description that the function gets when it is made.</source>
        <translation>비즈니스 기능을 만들 때 붙는 설명입니다.</translation>
    </message>
    <message>
        <source>Rule set for rules without one</source>
        <translation>규칙 집합이 없는 규칙의 규칙 집합</translation>
    </message>
    <message>
        <source>The rule set below this function that takes such rules. A new name holds from the next start on.</source>
        <translation>이러한 규칙이 들어가는, 이 비즈니스 기능 아래의 규칙 집합입니다. 새 이름은 다음 시작부터 적용됩니다.</translation>
    </message>
    <message>
        <source>Description of this rule set</source>
        <translation>이 규칙 집합의 설명</translation>
    </message>
    <message>
        <source>The description that the rule set gets when it is made.</source>
        <translation>규칙 집합을 만들 때 붙는 설명입니다.</translation>
    </message>
    <message>
        <source>A rule whose text no longer stands at its lines</source>
        <translation>텍스트가 더 이상 해당 행에 없는 규칙</translation>
    </message>
    <message>
        <source>What the validation does with it.</source>
        <translation>검증에서 이 규칙을 어떻게 처리할지 정합니다.</translation>
    </message>
    <message>
        <source>Take several blanks in a row for one</source>
        <translation>연속된 공백을 하나로 간주</translation>
    </message>
    <message>
        <source>Lines that differ only in the number of blanks between their words then count as the same when a segment is looked for in its file.</source>
        <translation>켜면 파일에서 세그먼트를 찾을 때 단어 사이의 공백 수만 다른 줄을 같은 줄로 봅니다.</translation>
    </message>
    <message>
        <source>Names that detection leaves out</source>
        <translation>감지에서 제외할 이름</translation>
    </message>
    <message>
        <source>Data elements whose names match a ticked template are not detected. In a template * stands for any characters, ? for one, # for a digit, and [A-F] for one of those listed; case does not matter.</source>
        <translation>선택 표시된 템플릿과 이름이 일치하는 데이터 요소는 감지되지 않습니다. 템플릿에서 *는 임의의 문자열, ?는 한 문자, #은 숫자 하나, [A-F]는 나열된 문자 중 하나를 나타냅니다. 대소문자는 구분하지 않습니다.</translation>
    </message>
    <message>
        <source>Constants moved to a variable count in its dataflow</source>
        <translation>변수로 옮긴 상수를 데이터 흐름에 포함</translation>
    </message>
    <message>
        <source>Where this is off, AutoDetect makes no rules of statements that do nothing but move a constant.</source>
        <translation>끄면 상수를 옮기기만 하는 문장에서는 자동 감지가 규칙을 만들지 않습니다.</translation>
    </message>
    <message>
        <source>What goes into the file with the chosen rules</source>
        <translation>선택한 규칙과 함께 파일에 넣을 것</translation>
    </message>
    <message>
        <source>How far an export follows the triggers of the rules.</source>
        <translation>내보내기에서 규칙의 트리거를 어디까지 따라갈지 정합니다.</translation>
    </message>
    <message>
        <source>Form of the source lines</source>
        <translation>소스 줄의 형식</translation>
    </message>
    <message>
        <source>Takes effect when the sources are scanned next.</source>
        <translation>다음에 소스를 스캔할 때 적용됩니다.</translation>
    </message>
    <message>
        <source>Folders of copybooks</source>
        <translation>카피북 폴더</translation>
    </message>
    <message>
        <source>Searched in this order, behind the program&apos;s own folder, and named relative to the workspace; a folder without a tick is passed over. With none, every folder that holds copybooks is searched. Takes effect when the sources are scanned next.</source>
        <translation>프로그램 자신의 폴더에 이어 이 순서대로 검색합니다. 작업 영역 기준의 상대 경로로 지정하며, 선택 표시가 없는 폴더는 건너뜁니다. 하나도 없으면 카피북이 있는 모든 폴더를 검색합니다. 다음에 소스를 스캔할 때 적용됩니다.</translation>
    </message>
    <message>
        <source>Glossary of business names</source>
        <translation>비즈니스 이름 용어집</translation>
    </message>
    <message>
        <source>Offers the commands that take business names of data elements from the glossary and put them there. Where this is off, the glossary&apos;s file stays as it is.</source>
        <translation>데이터 요소의 비즈니스 이름을 용어집에서 가져오거나 용어집에 넣는 명령을 제공합니다. 꺼도 용어집 파일은 그대로 남습니다.</translation>
    </message>
    <message>
        <source>“%1” is no known encoding; choose one of the list.</source>
        <translation>“%1”은(는) 알 수 없는 인코딩입니다. 목록에서 선택하십시오.</translation>
    </message>
    <message>
        <source>Encoding of the sources</source>
        <translation>소스의 인코딩</translation>
    </message>
    <message>
        <source>How the bytes of the source files stand for characters, in all projects of the workspace: one of those listed, or the name of another one. Where this is wrong, letters and columns look wrong. What is on view is read again at once, the programs when the sources are scanned next.</source>
        <translation>작업 영역의 모든 프로젝트에서 소스 파일의 바이트가 어떤 문자를 나타내는지 정합니다. 목록에서 선택하거나 다른 인코딩의 이름을 입력합니다. 잘못되면 문자와 열이 올바르게 표시되지 않습니다. 표시 중인 소스는 즉시, 프로그램은 다음에 소스를 검사할 때 다시 읽습니다.</translation>
    </message>
</context>
<context>
    <name>ScanSummary</name>
    <message>
        <source>No COBOL program was found in the workspace.</source>
        <translation>작업 영역에서 COBOL 프로그램을 찾지 못했습니다.</translation>
    </message>
    <message>
        <source>Programs scanned: %1</source>
        <translation>스캔한 프로그램: %1</translation>
    </message>
    <message>
        <source>unchanged: %1</source>
        <translation>변경 없음: %1</translation>
    </message>
    <message>
        <source>missing: %1</source>
        <translation>누락: %1</translation>
    </message>
    <message>
        <source>failed: %1</source>
        <translation>실패: %1</translation>
    </message>
    <message>
        <source>stopped before the end</source>
        <translation>끝나기 전에 중지됨</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Programs: %1  Rules: %2</source>
        <translation>프로그램: %1  규칙: %2</translation>
    </message>
</context>
<context>
    <name>ValidationResults</name>
    <message>
        <source>unchanged</source>
        <translation>변경 없음</translation>
    </message>
    <message>
        <source>The text stands at its rows.</source>
        <translation>텍스트가 원래 행에 있습니다.</translation>
    </message>
    <message>
        <source>in place</source>
        <translation>제자리</translation>
    </message>
    <message>
        <source>The text stands at its rows, with other blanks or in other case.</source>
        <translation>텍스트가 원래 행에 있지만 공백이나 대소문자가 다릅니다.</translation>
    </message>
    <message>
        <source>no segment</source>
        <translation>세그먼트 없음</translation>
    </message>
    <message>
        <source>The rule has no segment.</source>
        <translation>규칙에 세그먼트가 없습니다.</translation>
    </message>
    <message>
        <source>moved</source>
        <translation>이동됨</translation>
    </message>
    <message>
        <source>The text stands at other rows of the file.</source>
        <translation>텍스트가 파일의 다른 행에 있습니다.</translation>
    </message>
    <message>
        <source>ambiguous</source>
        <translation>여러 곳</translation>
    </message>
    <message>
        <source>The text stands at several places of the file.</source>
        <translation>텍스트가 파일의 여러 곳에 있습니다.</translation>
    </message>
    <message>
        <source>not found</source>
        <translation>찾을 수 없음</translation>
    </message>
    <message>
        <source>The text is nowhere in the file.</source>
        <translation>텍스트가 파일의 어디에도 없습니다.</translation>
    </message>
    <message>
        <source>rows disagree</source>
        <translation>행 수 불일치</translation>
    </message>
    <message>
        <source>The stored text has more lines than the rule has rows, so it was not looked for.</source>
        <translation>저장된 텍스트의 줄 수가 규칙의 행 수보다 많아 찾지 않았습니다.</translation>
    </message>
    <message>
        <source>file missing</source>
        <translation>파일 없음</translation>
    </message>
    <message>
        <source>The file cannot be read.</source>
        <translation>파일을 읽을 수 없습니다.</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>변경됨</translation>
    </message>
    <message>
        <source>The text does not stand at its rows.</source>
        <translation>텍스트가 원래 행에 없습니다.</translation>
    </message>
    <message>
        <source>%1, rows %2</source>
        <translation>%1, 행 %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Stored text: %1</source>
        <translation>저장된 텍스트: %1</translation>
    </message>
    <message>
        <source>Nearest place: %1</source>
        <translation>가장 가까운 곳: %1</translation>
    </message>
    <message>
        <source>Other place: %1</source>
        <translation>다른 곳: %1</translation>
    </message>
    <message>
        <source>Something like it, characters that differ: %2. %1</source>
        <translation>비슷한 곳, 다른 문자 수: %2. %1</translation>
    </message>
    <message>
        <source>Now: %1</source>
        <translation>현재: %1</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::ChoiceEditor</name>
    <message>
        <source>“%1”, as it stands in the file</source>
        <translation>“%1”(파일에 있는 그대로)</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::CodeText</name>
    <message>
        <source>Source text</source>
        <translation>소스 텍스트</translation>
    </message>
    <message>
        <source>Segment: row %1</source>
        <translation>세그먼트: 행 %1</translation>
    </message>
    <message>
        <source>Segment: rows %1 to %2</source>
        <translation>세그먼트: 행 %1~%2</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::ComparisonView</name>
    <message>
        <source>Previous place</source>
        <translation>이전 곳</translation>
    </message>
    <message>
        <source>Next place</source>
        <translation>다음 곳</translation>
    </message>
    <message>
        <source>Show the rule in the tree</source>
        <translation>트리에서 규칙 표시</translation>
    </message>
    <message>
        <source>Stored text</source>
        <translation>저장된 텍스트</translation>
    </message>
    <message>
        <source>Text in the file</source>
        <translation>파일의 텍스트</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1/%2</translation>
    </message>
    <message>
        <source>Choose a rule to compare its text with the file.</source>
        <translation>규칙을 선택하면 그 텍스트를 파일과 비교합니다.</translation>
    </message>
    <message>
        <source>%1 cannot be read.</source>
        <translation>%1을(를) 읽을 수 없습니다.</translation>
    </message>
    <message>
        <source>No line differs.</source>
        <translation>다른 줄이 없습니다.</translation>
    </message>
    <message>
        <source>Lines that differ: %1 of %2.</source>
        <translation>다른 줄: %1/%2.</translation>
    </message>
    <message>
        <source>Only the first %1 lines are shown.</source>
        <translation>처음 %1줄만 표시됩니다.</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::ControlView</name>
    <message>
        <source>Commands</source>
        <translation>명령</translation>
    </message>
    <message>
        <source>Rule catalogue</source>
        <translation>규칙 카탈로그</translation>
    </message>
    <message>
        <source>Descriptions</source>
        <translation>설명</translation>
    </message>
    <message>
        <source>Scroll the attributes</source>
        <translation>특성 스크롤</translation>
    </message>
    <message>
        <source>Source file</source>
        <translation>소스 파일</translation>
    </message>
    <message>
        <source>Lists of the rule</source>
        <translation>규칙의 목록</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::EncodingBox</name>
    <message>
        <source>UTF-8, else ISO-8859-1</source>
        <translation>UTF-8, 아니면 ISO-8859-1</translation>
    </message>
    <message>
        <source>Unicode</source>
        <translation>유니코드</translation>
    </message>
    <message>
        <source>Western European</source>
        <translation>서유럽</translation>
    </message>
    <message>
        <source>Western European, Windows</source>
        <translation>서유럽, Windows</translation>
    </message>
    <message>
        <source>Japanese, Windows</source>
        <translation>일본어, Windows</translation>
    </message>
    <message>
        <source>Japanese, Unix</source>
        <translation>일본어, Unix</translation>
    </message>
    <message>
        <source>Korean</source>
        <translation>한국어</translation>
    </message>
    <message>
        <source>EBCDIC, North America</source>
        <translation>EBCDIC, 북미</translation>
    </message>
    <message>
        <source>EBCDIC, German</source>
        <translation>EBCDIC, 독일어</translation>
    </message>
    <message>
        <source>EBCDIC, international</source>
        <translation>EBCDIC, 국제</translation>
    </message>
    <message>
        <source>EBCDIC, Unix services</source>
        <translation>EBCDIC, Unix 서비스</translation>
    </message>
    <message>
        <source>EBCDIC, Japanese</source>
        <translation>EBCDIC, 일본어</translation>
    </message>
    <message>
        <source>EBCDIC, Korean</source>
        <translation>EBCDIC, 한국어</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Encodings</source>
        <translation>인코딩</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::FailureBar</name>
    <message>
        <source>Copy</source>
        <translation>복사</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>닫기</translation>
    </message>
    <message>
        <source>Close this notice</source>
        <translation>이 알림 닫기</translation>
    </message>
    <message>
        <source>Failure</source>
        <translation>오류</translation>
    </message>
    <message>
        <source>%1 (and %2 earlier)</source>
        <translation>%1 (이전 오류 %2개 더 있음)</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::FindBar</name>
    <message>
        <source>&amp;Find:</source>
        <translation>찾기(&amp;F):</translation>
    </message>
    <message>
        <source>Text to find</source>
        <translation>찾을 텍스트</translation>
    </message>
    <message>
        <source>Match &amp;case</source>
        <translation>대소문자 구분(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Whole word</source>
        <translation>단어 단위(&amp;W)</translation>
    </message>
    <message>
        <source>Previous match (Shift+F3)</source>
        <translation>이전 찾기 (Shift+F3)</translation>
    </message>
    <message>
        <source>Previous match</source>
        <translation>이전 찾기</translation>
    </message>
    <message>
        <source>Next match (F3)</source>
        <translation>다음 찾기 (F3)</translation>
    </message>
    <message>
        <source>Next match</source>
        <translation>다음 찾기</translation>
    </message>
    <message>
        <source>Matches</source>
        <translation>일치 항목</translation>
    </message>
    <message>
        <source>continued at the beginning</source>
        <translation>처음부터 계속했습니다</translation>
    </message>
    <message>
        <source>continued at the end</source>
        <translation>끝에서부터 계속했습니다</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1/%2</translation>
    </message>
    <message>
        <source>No match</source>
        <translation>일치 항목 없음</translation>
    </message>
    <message>
        <source>%1 matches</source>
        <translation>일치 항목 %1개</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::FindingModel</name>
    <message>
        <source>Verdict</source>
        <translation>판정</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>규칙</translation>
    </message>
    <message>
        <source>File</source>
        <translation>파일</translation>
    </message>
    <message>
        <source>Old rows</source>
        <translation>이전 행</translation>
    </message>
    <message>
        <source>New rows</source>
        <translation>새 행</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::Locator</name>
    <message>
        <source>Locator</source>
        <translation>찾아가기</translation>
    </message>
    <message>
        <source>Go to a function, rule set, rule or program</source>
        <translation>비즈니스 기능, 규칙 집합, 규칙 또는 프로그램으로 이동</translation>
    </message>
    <message>
        <source>Part of a name</source>
        <translation>이름의 일부</translation>
    </message>
    <message>
        <source>Matches</source>
        <translation>일치 항목</translation>
    </message>
    <message>
        <source>Type a part of a name, or several parts with blanks between them.</source>
        <translation>이름의 일부를 입력하십시오. 공백으로 구분하여 여러 부분을 입력할 수도 있습니다.</translation>
    </message>
    <message>
        <source>No name matches.</source>
        <translation>일치하는 이름이 없습니다.</translation>
    </message>
    <message>
        <source>Enter goes to the marked one, Escape closes.</source>
        <translation>Enter를 누르면 선택한 항목으로 이동하고, Esc를 누르면 닫힙니다.</translation>
    </message>
    <message>
        <source>Searching... %1 %</source>
        <translation>찾는 중... %1 %</translation>
    </message>
    <message>
        <source>Searching for better matches... %1 %. Enter goes to the marked one.</source>
        <translation>더 나은 항목을 찾는 중... %1 %. Enter를 누르면 표시된 항목으로 이동합니다.</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::LocatorModel</name>
    <message>
        <source>Business function</source>
        <translation>비즈니스 기능</translation>
    </message>
    <message>
        <source>Rule set</source>
        <translation>규칙 집합</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>규칙</translation>
    </message>
    <message>
        <source>%1 program</source>
        <translation>%1 프로그램</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::MainWindow</name>
    <message>
        <source>Programs</source>
        <translation>프로그램</translation>
    </message>
    <message>
        <source>Business Rules</source>
        <translation>비즈니스 규칙</translation>
    </message>
    <message>
        <source>QMRules Workbench</source>
        <translation>QMRules Workbench</translation>
    </message>
    <message>
        <source>Open Workspace</source>
        <translation>작업 영역 열기</translation>
    </message>
    <message>
        <source>Validation</source>
        <translation>유효성 검사</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::NewWorkspaceDialog</name>
    <message>
        <source>&amp;Scan the programs now</source>
        <translation>지금 프로그램 스캔(&amp;S)</translation>
    </message>
    <message>
        <source>New Workspace</source>
        <translation>새 작업 영역</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>찾아보기(&amp;B)...</translation>
    </message>
    <message>
        <source>Source &amp;folder:</source>
        <translation>소스 폴더(&amp;F):</translation>
    </message>
    <message>
        <source>&amp;Project:</source>
        <translation>프로젝트(&amp;P):</translation>
    </message>
    <message>
        <source>&amp;Encoding of the sources:</source>
        <translation>소스의 인코딩(&amp;E):</translation>
    </message>
    <message>
        <source>&amp;Create</source>
        <translation>만들기(&amp;C)</translation>
    </message>
    <message>
        <source>Folder of the Sources</source>
        <translation>소스 폴더</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::OptionPage</name>
    <message>
        <source>Options of this project</source>
        <translation>이 프로젝트의 옵션</translation>
    </message>
    <message>
        <source>Options of the workspace, for all projects</source>
        <translation>작업 영역의 옵션(모든 프로젝트 공통)</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::OptionsWindow</name>
    <message>
        <source>No option matches.</source>
        <translation>일치하는 옵션이 없습니다.</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>옵션</translation>
    </message>
    <message>
        <source>Search options</source>
        <translation>옵션 검색</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>페이지</translation>
    </message>
    <message>
        <source>Gives the options of this page the values that they had at first</source>
        <translation>이 페이지의 옵션을 처음 값으로 되돌립니다</translation>
    </message>
    <message>
        <source>Options: %1</source>
        <translation>옵션: %1</translation>
    </message>
    <message>
        <source>The options were not stored, and are as they were.</source>
        <translation>옵션이 저장되지 않았으며 이전 그대로입니다.</translation>
    </message>
    <message>
        <source>Drop the changes that you have made?</source>
        <translation>변경한 내용을 버리시겠습니까?</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::ProgramModel</name>
    <message>
        <source>%1
%2, lines: %3</source>
        <translation>%1
%2, 줄 수: %3</translation>
    </message>
    <message>
        <source>Rules: %1</source>
        <translation>규칙: %1</translation>
    </message>
    <message>
        <source>Program</source>
        <translation>프로그램</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>언어</translation>
    </message>
    <message>
        <source>Rules</source>
        <translation>규칙</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::ProgramsPane</name>
    <message>
        <source>Filter programs</source>
        <translation>프로그램 필터</translation>
    </message>
    <message>
        <source>Programs</source>
        <translation>프로그램</translation>
    </message>
    <message>
        <source>The project has no programs yet. Choose File &gt; Scan Sources to find them.</source>
        <translation>프로젝트에 아직 프로그램이 없습니다. [파일] &gt; [소스 스캔]을 선택하여 찾으십시오.</translation>
    </message>
    <message>
        <source>No program&apos;s name or file has this text.</source>
        <translation>이름이나 파일에 이 텍스트가 있는 프로그램이 없습니다.</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::ProgressPanel</name>
    <message>
        <source>Cancel</source>
        <translation>취소</translation>
    </message>
    <message>
        <source>Stop this work (Esc)</source>
        <translation>이 작업 중지 (Esc)</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>진행률</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::QtToolBar</name>
    <message>
        <source>More commands</source>
        <translation>추가 명령</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::QtUpDown</name>
    <message>
        <source>Up</source>
        <translation>위로</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>아래로</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::ResultsPane</name>
    <message>
        <source>Filter by verdict, rule or file</source>
        <translation>판정, 규칙, 파일로 필터링</translation>
    </message>
    <message>
        <source>Results of the validation</source>
        <translation>유효성 검사 결과</translation>
    </message>
    <message>
        <source>No result has this text.</source>
        <translation>이 텍스트가 있는 결과가 없습니다.</translation>
    </message>
    <message>
        <source>No rule has been validated yet. Check rules and choose Validate.</source>
        <translation>아직 유효성을 검사한 규칙이 없습니다. 규칙을 선택하고 유효성 검사를 실행하십시오.</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::RowBar</name>
    <message>
        <source>&amp;Go to row:</source>
        <translation>행으로 이동(&amp;G):</translation>
    </message>
    <message>
        <source>Row number</source>
        <translation>행 번호</translation>
    </message>
    <message>
        <source>of %1</source>
        <translation>/ %1</translation>
    </message>
    <message>
        <source>Rows go from 1 to %1.</source>
        <translation>행은 1부터 %1까지입니다.</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>행</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::RowMargin</name>
    <message>
        <source>Row numbers</source>
        <translation>행 번호</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::SourceView</name>
    <message>
        <source>Source viewer</source>
        <translation>소스 뷰어</translation>
    </message>
    <message>
        <source>F&amp;ile:</source>
        <translation>파일(&amp;I):</translation>
    </message>
    <message>
        <source>File of the program</source>
        <translation>프로그램의 파일</translation>
    </message>
    <message>
        <source>Why no source is shown</source>
        <translation>소스가 표시되지 않는 이유</translation>
    </message>
    <message>
        <source>Place in the source</source>
        <translation>소스 내 위치</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>복사(&amp;C)</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>모두 선택(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Find…</source>
        <translation>찾기(&amp;F)…</translation>
    </message>
    <message>
        <source>Find &amp;Next</source>
        <translation>다음 찾기(&amp;N)</translation>
    </message>
    <message>
        <source>Find &amp;Previous</source>
        <translation>이전 찾기(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Go to Row…</source>
        <translation>행으로 이동(&amp;G)…</translation>
    </message>
    <message>
        <source>Next Se&amp;gment</source>
        <translation>다음 세그먼트(&amp;G)</translation>
    </message>
    <message>
        <source>Pre&amp;vious Segment</source>
        <translation>이전 세그먼트(&amp;V)</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>확대(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>축소(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Reset Zoom</source>
        <translation>기본 크기로(&amp;R)</translation>
    </message>
    <message>
        <source>No source is on view.</source>
        <translation>표시 중인 소스가 없습니다.</translation>
    </message>
    <message>
        <source>Reading %1…</source>
        <translation>%1 읽는 중…</translation>
    </message>
    <message>
        <source>%1 cannot be shown.</source>
        <translation>%1을(를) 표시할 수 없습니다.</translation>
    </message>
    <message>
        <source>Row %1, column %2</source>
        <translation>행 %1, 열 %2</translation>
    </message>
    <message>
        <source>Text in row %1 selected</source>
        <translation>행 %1의 텍스트 선택됨</translation>
    </message>
    <message>
        <source>Text in rows %1 to %2 selected</source>
        <translation>행 %1~%2의 텍스트 선택됨</translation>
    </message>
    <message>
        <source>Row %1 selected</source>
        <translation>행 %1 선택됨</translation>
    </message>
    <message>
        <source>Rows %1 to %2 selected</source>
        <translation>행 %1~%2 선택됨</translation>
    </message>
    <message>
        <source>No segment begins below this row.</source>
        <translation>이 행 아래에서 시작하는 세그먼트가 없습니다.</translation>
    </message>
    <message>
        <source>No segment begins above this row.</source>
        <translation>이 행 위에서 시작하는 세그먼트가 없습니다.</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::SplitterBar</name>
    <message>
        <source>Line between the left and the right pane</source>
        <translation>왼쪽 창과 오른쪽 창 사이의 선</translation>
    </message>
    <message>
        <source>Line between the upper and the lower pane</source>
        <translation>위쪽 창과 아래쪽 창 사이의 선</translation>
    </message>
    <message>
        <source>The arrow keys move it, Enter leads back</source>
        <translation>화살표 키로 움직이고 Enter를 누르면 돌아갑니다</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::StartPage</name>
    <message>
        <source>Business rules of legacy programs</source>
        <translation>레거시 프로그램의 비즈니스 규칙</translation>
    </message>
    <message>
        <source>A workspace is a folder of program sources with a catalogue of business rules beside them. The sources stay as they are.</source>
        <translation>작업 영역은 프로그램 소스가 있는 폴더에 비즈니스 규칙 카탈로그를 더한 것입니다. 소스는 그대로 유지됩니다.</translation>
    </message>
    <message>
        <source>&amp;Open Workspace...</source>
        <translation>작업 영역 열기(&amp;O)...</translation>
    </message>
    <message>
        <source>A folder that holds a workspace already.</source>
        <translation>이미 작업 영역이 있는 폴더입니다.</translation>
    </message>
    <message>
        <source>&amp;New Workspace...</source>
        <translation>새 작업 영역(&amp;N)...</translation>
    </message>
    <message>
        <source>Makes a workspace over a folder of sources, and scans the programs in it.</source>
        <translation>소스 폴더에 작업 영역을 만들고 그 안의 프로그램을 스캔합니다.</translation>
    </message>
    <message>
        <source>Last opened</source>
        <translation>최근에 연 항목</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::TextBar</name>
    <message>
        <source>Close (Esc)</source>
        <translation>닫기(Esc)</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>닫기</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::TextListEditor</name>
    <message>
        <source>Remove</source>
        <translation>제거</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>위로 이동</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>아래로 이동</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>추가</translation>
    </message>
    <message>
        <source>Choose Folder...</source>
        <translation>폴더 선택...</translation>
    </message>
    <message>
        <source>Choose a Folder of Copybooks</source>
        <translation>카피북 폴더 선택</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::WindowMenus</name>
    <message>
        <source>&amp;File</source>
        <translation>파일(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;New Workspace...</source>
        <translation>새 작업 영역(&amp;N)...</translation>
    </message>
    <message>
        <source>&amp;Open Workspace...</source>
        <translation>작업 영역 열기(&amp;O)...</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>최근 작업 영역(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Close Workspace</source>
        <translation>작업 영역 닫기(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Scan Sources</source>
        <translation>소스 스캔(&amp;S)</translation>
    </message>
    <message>
        <source>O&amp;ptions...</source>
        <translation>옵션(&amp;P)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>종료(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Navigate</source>
        <translation>이동(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Go to...</source>
        <translation>찾아가기(&amp;G)...</translation>
    </message>
    <message>
        <source>&amp;Programs</source>
        <translation>프로그램(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Source</source>
        <translation>소스(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Rules</source>
        <translation>규칙(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>보기(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Larger Letters</source>
        <translation>글자 크게(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Smaller Letters</source>
        <translation>글자 작게(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Normal Letters</source>
        <translation>기본 글자 크기(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Restore First Layout</source>
        <translation>처음 배치로 되돌리기(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>언어(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Colours</source>
        <translation>색상(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;System</source>
        <translation>시스템 설정(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>밝게(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>어둡게(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>도움말(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Keyboard</source>
        <translation>키보드(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>정보(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Validation</source>
        <translation>유효성 검사(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Move the Lines between Panes</source>
        <translation>창 사이의 선 움직이기(&amp;M)</translation>
    </message>
    <message>
        <source>Lar&amp;ger Pane</source>
        <translation>창 크게(&amp;G)</translation>
    </message>
    <message>
        <source>Sm&amp;aller Pane</source>
        <translation>창 작게(&amp;A)</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::WorkspaceDesk</name>
    <message>
        <source>%1 is not in the tree now.</source>
        <translation>%1은(는) 지금 트리에 없습니다.</translation>
    </message>
    <message>
        <source>Scan Sources</source>
        <translation>소스 스캔</translation>
    </message>
</context>
</TS>
