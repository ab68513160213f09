<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP">
<context>
    <name>HelpPages</name>
    <message>
        <source>Check or uncheck the node</source>
        <translation>ノードのチェックを付ける/外す</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Space</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Del</source>
        <translation>Del</translation>
    </message>
    <message>
        <source>Check all</source>
        <translation>すべてにチェックを付ける</translation>
    </message>
    <message>
        <source>Ctrl+A</source>
        <translation>Ctrl+A</translation>
    </message>
    <message>
        <source>Uncheck all</source>
        <translation>すべてのチェックを外す</translation>
    </message>
    <message>
        <source>Ctrl+U</source>
        <translation>Ctrl+U</translation>
    </message>
    <message>
        <source>Open the popup menu</source>
        <translation>ポップアップメニューを開く</translation>
    </message>
    <message>
        <source>Shift+F10</source>
        <translation>Shift+F10</translation>
    </message>
    <message>
        <source>Select whole rows</source>
        <translation>行全体を選択する</translation>
    </message>
    <message>
        <source>Shift+Up, Shift+Down</source>
        <translation>Shift+↑、Shift+↓</translation>
    </message>
    <message>
        <source>Select rows with the mouse</source>
        <translation>マウスで行を選択する</translation>
    </message>
    <message>
        <source>Click and drag on the row numbers</source>
        <translation>行番号の上をクリックしてドラッグ</translation>
    </message>
    <message>
        <source>Cancel work that takes long</source>
        <translation>時間のかかる処理を中止する</translation>
    </message>
    <message>
        <source>Esc</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Next or previous field</source>
        <translation>次または前のフィールドへ移動</translation>
    </message>
    <message>
        <source>Tab, Shift+Tab</source>
        <translation>Tab、Shift+Tab</translation>
    </message>
    <message>
        <source>Keyboard</source>
        <translation>キーボード</translation>
    </message>
    <message>
        <source>What it does</source>
        <translation>動作</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>キー</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>ウィンドウ</translation>
    </message>
    <message>
        <source>Tree of the rules</source>
        <translation>ルールのツリー</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>ソース</translation>
    </message>
    <message>
        <source>Everywhere</source>
        <translation>共通</translation>
    </message>
    <message>
        <source>About</source>
        <translation>バージョン情報</translation>
    </message>
    <message>
        <source>QMRules Workbench %1</source>
        <translation>QMRules Workbench %1</translation>
    </message>
    <message>
        <source>The catalogue of the business rules of legacy programs.

Made with Qt %1, SQLite and libxml2.</source>
        <translation>レガシープログラムのビジネスルールのカタログです。

Qt %1、SQLite、libxml2 を使用しています。</translation>
    </message>
</context>
<context>
    <name>Options</name>
    <message>
        <source>A line of the list is empty.</source>
        <translation>リストに空の行があります。</translation>
    </message>
    <message>
        <source>“%1” stands in the list twice.</source>
        <translation>「%1」がリストに 2 回あります。</translation>
    </message>
    <message>
        <source>“%1” is no template: each “[” needs its “]”, and a range goes upwards, as in [A-F].</source>
        <translation>「%1」はテンプレートとして正しくありません。「[」には対応する「]」が必要で、範囲は [A-F] のように昇順で指定します。</translation>
    </message>
    <message>
        <source>“%1” is named from the root of the disk; name it relative to the workspace.</source>
        <translation>「%1」は絶対パスです。ワークスペースからの相対パスで指定してください。</translation>
    </message>
    <message>
        <source>“%1” lies outside the workspace; copy it into the workspace.</source>
        <translation>「%1」はワークスペースの外にあります。ワークスペースの中にコピーしてください。</translation>
    </message>
    <message>
        <source>The text holds a control character; type it anew.</source>
        <translation>テキストに制御文字が含まれています。入力し直してください。</translation>
    </message>
    <message>
        <source>Enter a name.</source>
        <translation>名前を入力してください。</translation>
    </message>
    <message>
        <source>The name has blanks around it; take them away.</source>
        <translation>名前の前後に空白があります。取り除いてください。</translation>
    </message>
    <message>
        <source>Unassigned Rules</source>
        <translation>未割り当てルール</translation>
    </message>
    <message>
        <source>Rule Validation</source>
        <translation>ルールの検証</translation>
    </message>
    <message>
        <source>Detection</source>
        <translation>検出</translation>
    </message>
    <message>
        <source>Rule Export</source>
        <translation>ルールのエクスポート</translation>
    </message>
    <message>
        <source>COBOL Sources</source>
        <translation>COBOL ソース</translation>
    </message>
    <message>
        <source>Components</source>
        <translation>コンポーネント</translation>
    </message>
    <message>
        <source>Mark it invalid, and leave the segment as it is</source>
        <translation>無効とし、セグメントはそのままにする</translation>
    </message>
    <message>
        <source>Take its segment away</source>
        <translation>セグメントを取り除く</translation>
    </message>
    <message>
        <source>Look for the text in the file, and move the segment there</source>
        <translation>ファイル内でテキストを探し、セグメントをそこへ移動する</translation>
    </message>
    <message>
        <source>Nothing else</source>
        <translation>ほかには何も含めない</translation>
    </message>
    <message>
        <source>The rule sets that the rules trigger, with their rules, and so on from there</source>
        <translation>ルールがトリガーするルールセットとそのルール、さらにその先も含める</translation>
    </message>
    <message>
        <source>Told from each file</source>
        <translation>ファイルごとに判別する</translation>
    </message>
    <message>
        <source>Fixed: text in columns 8 to 72</source>
        <translation>固定形式: 8 ~ 72 桁がテキスト</translation>
    </message>
    <message>
        <source>Wide: text from column 8 to the end of the line</source>
        <translation>ワイド形式: 8 桁から行末までがテキスト</translation>
    </message>
    <message>
        <source>Free: text anywhere on the line</source>
        <translation>自由形式: 行のどこにでもテキスト</translation>
    </message>
    <message>
        <source>Business function for rules without one</source>
        <translation>ビジネス機能のないルールの所属先</translation>
    </message>
    <message>
        <source>Rules that are made without a place of their own go to this function, which is made when it is first needed. A new name holds from the next start on; a function that stands under the old name stays as it is.</source>
        <translation>所属先を指定せずに作成されたルールはこのビジネス機能に入ります。ビジネス機能は最初に必要になったときに作成されます。新しい名前は次回の起動から有効になり、古い名前のビジネス機能はそのまま残ります。</translation>
    </message>
    <message>
        <source>Description of this business function</source>
        <translation>このビジネス機能の説明</translation>
    </message>
    <message>
        <source>The description that the function gets when it is made.</source>
        <translation>ビジネス機能が作成されるときに付けられる説明です。</translation>
    </message>
    <message>
        <source>Rule set for rules without one</source>
        <translation>ルールセットのないルールの所属先</translation>
    </message>
    <message>
        <source>The rule set below this function that takes such rules. A new name holds from the next start on.</source>
        <translation>そのようなルールが入る、このビジネス機能の下のルールセットです。新しい名前は次回の起動から有効になります。</translation>
    </message>
    <message>
        <source>Description of this rule set</source>
        <translation>このルールセットの説明</translation>
    </message>
    <message>
        <source>The description that the rule set gets when it is made.</source>
        <translation>ルールセットが作成されるときに付けられる説明です。</translation>
    </message>
    <message>
        <source>A rule whose text no longer stands at its lines</source>
        <translation>テキストが元の行になくなったルール</translation>
    </message>
    <message>
        <source>What the validation does with it.</source>
        <translation>検証でこのルールをどう扱うかを指定します。</translation>
    </message>
    <message>
        <source>Take several blanks in a row for one</source>
        <translation>連続する空白を 1 つとみなす</translation>
    </message>
    <message>
        <source>Lines that differ only in the number of blanks between their words then count as the same when a segment is looked for in its file.</source>
        <translation>オンにすると、ファイル内でセグメントを探すときに、単語間の空白の数だけが異なる行を同じ行とみなします。</translation>
    </message>
    <message>
        <source>Names that detection leaves out</source>
        <translation>検出から除外する名前</translation>
    </message>
    <message>
        <source>Data elements whose names match a ticked template are not detected. In a template * stands for any characters, ? for one, # for a digit, and [A-F] for one of those listed; case does not matter.</source>
        <translation>チェックを付けたテンプレートに名前が一致するデータ要素は検出されません。テンプレートでは * が任意の文字列、? が任意の 1 文字、# が数字 1 文字、[A-F] が列挙した文字のうち 1 文字を表します。大文字と小文字は区別しません。</translation>
    </message>
    <message>
        <source>Constants moved to a variable count in its dataflow</source>
        <translation>変数への定数の転記をデータフローに含める</translation>
    </message>
    <message>
        <source>Where this is off, AutoDetect makes no rules of statements that do nothing but move a constant.</source>
        <translation>オフにすると、定数を転記するだけの文からは自動検出でルールが作成されません。</translation>
    </message>
    <message>
        <source>What goes into the file with the chosen rules</source>
        <translation>選択したルールと一緒にファイルに含めるもの</translation>
    </message>
    <message>
        <source>How far an export follows the triggers of the rules.</source>
        <translation>エクスポートでルールのトリガーをどこまでたどるかを指定します。</translation>
    </message>
    <message>
        <source>Form of the source lines</source>
        <translation>ソース行の形式</translation>
    </message>
    <message>
        <source>Takes effect when the sources are scanned next.</source>
        <translation>次にソースをスキャンしたときに有効になります。</translation>
    </message>
    <message>
        <source>Folders of copybooks</source>
        <translation>コピーブックのフォルダー</translation>
    </message>
    <message>
        <source>Searched in this order, behind the program&apos;s own folder, and named relative to the workspace; a folder without a tick is passed over. With none, every folder that holds copybooks is searched. Takes effect when the sources are scanned next.</source>
        <translation>プログラム自身のフォルダーに続いて、この順に検索されます。ワークスペースからの相対パスで指定し、チェックのないフォルダーは飛ばされます。1 つもない場合は、コピーブックのあるすべてのフォルダーが検索されます。次にソースをスキャンしたときに有効になります。</translation>
    </message>
    <message>
        <source>Glossary of business names</source>
        <translation>ビジネス名の用語集</translation>
    </message>
    <message>
        <source>Offers the commands that take business names of data elements from the glossary and put them there. Where this is off, the glossary&apos;s file stays as it is.</source>
        <translation>データ要素のビジネス名を用語集から取り込むコマンドと、用語集に書き込むコマンドを使えるようにします。オフにしても用語集のファイルはそのまま残ります。</translation>
    </message>
    <message>
        <source>“%1” is no known encoding; choose one of the list.</source>
        <translation>「%1」は知られていないエンコーディングです。一覧から選んでください。</translation>
    </message>
    <message>
        <source>Encoding of the sources</source>
        <translation>ソースのエンコーディング</translation>
    </message>
    <message>
        <source>How the bytes of the source files stand for characters, in all projects of the workspace: one of those listed, or the name of another one. Where this is wrong, letters and columns look wrong. What is on view is read again at once, the programs when the sources are scanned next.</source>
        <translation>ワークスペースのすべてのプロジェクトで、ソース ファイルのバイトがどの文字を表すか。一覧から選ぶか、ほかのエンコーディングの名前を入力します。誤っていると、文字や桁が正しく表示されません。表示中のソースはすぐに、プログラムは次にソースをスキャンするときに読み直されます。</translation>
    </message>
</context>
<context>
    <name>ScanSummary</name>
    <message>
        <source>No COBOL program was found in the workspace.</source>
        <translation>ワークスペースに COBOL プログラムが見つかりませんでした。</translation>
    </message>
    <message>
        <source>Programs scanned: %1</source>
        <translation>スキャンしたプログラム: %1</translation>
    </message>
    <message>
        <source>unchanged: %1</source>
        <translation>変更なし: %1</translation>
    </message>
    <message>
        <source>missing: %1</source>
        <translation>見つからない: %1</translation>
    </message>
    <message>
        <source>failed: %1</source>
        <translation>失敗: %1</translation>
    </message>
    <message>
        <source>stopped before the end</source>
        <translation>途中で中止</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Programs: %1  Rules: %2</source>
        <translation>プログラム: %1  ルール: %2</translation>
    </message>
</context>
<context>
    <name>ValidationResults</name>
    <message>
        <source>unchanged</source>
        <translation>変更なし</translation>
    </message>
    <message>
        <source>The text stands at its rows.</source>
        <translation>テキストは元の行にあります。</translation>
    </message>
    <message>
        <source>in place</source>
        <translation>元の位置</translation>
    </message>
    <message>
        <source>The text stands at its rows, with other blanks or in other case.</source>
        <translation>テキストは元の行にありますが、空白または大文字と小文字が異なります。</translation>
    </message>
    <message>
        <source>no segment</source>
        <translation>セグメントなし</translation>
    </message>
    <message>
        <source>The rule has no segment.</source>
        <translation>ルールにセグメントがありません。</translation>
    </message>
    <message>
        <source>moved</source>
        <translation>移動</translation>
    </message>
    <message>
        <source>The text stands at other rows of the file.</source>
        <translation>テキストはファイルの別の行にあります。</translation>
    </message>
    <message>
        <source>ambiguous</source>
        <translation>複数あり</translation>
    </message>
    <message>
        <source>The text stands at several places of the file.</source>
        <translation>テキストはファイルの複数の箇所にあります。</translation>
    </message>
    <message>
        <source>not found</source>
        <translation>見つからない</translation>
    </message>
    <message>
        <source>The text is nowhere in the file.</source>
        <translation>テキストはファイルのどこにもありません。</translation>
    </message>
    <message>
        <source>rows disagree</source>
        <translation>行数の不一致</translation>
    </message>
    <message>
        <source>The stored text has more lines than the rule has rows, so it was not looked for.</source>
        <translation>保存されたテキストの行数がルールの行数より多いため、検索されませんでした。</translation>
    </message>
    <message>
        <source>file missing</source>
        <translation>ファイルなし</translation>
    </message>
    <message>
        <source>The file cannot be read.</source>
        <translation>ファイルを読み取れません。</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>変更あり</translation>
    </message>
    <message>
        <source>The text does not stand at its rows.</source>
        <translation>テキストは元の行にありません。</translation>
    </message>
    <message>
        <source>%1, rows %2</source>
        <translation>%1、行 %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Stored text: %1</source>
        <translation>保存されたテキスト: %1</translation>
    </message>
    <message>
        <source>Nearest place: %1</source>
        <translation>最も近い箇所: %1</translation>
    </message>
    <message>
        <source>Other place: %1</source>
        <translation>別の箇所: %1</translation>
    </message>
    <message>
        <source>Something like it, characters that differ: %2. %1</source>
        <translation>似た箇所、異なる文字数: %2。%1</translation>
    </message>
    <message>
        <source>Now: %1</source>
        <translation>現在: %1</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::ChoiceEditor</name>
    <message>
        <source>“%1”, as it stands in the file</source>
        <translation>「%1」(ファイルの値のまま)</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::CodeText</name>
    <message>
        <source>Source text</source>
        <translation>ソーステキスト</translation>
    </message>
    <message>
        <source>Segment: row %1</source>
        <translation>セグメント: 行 %1</translation>
    </message>
    <message>
        <source>Segment: rows %1 to %2</source>
        <translation>セグメント: 行 %1 ~ %2</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::ComparisonView</name>
    <message>
        <source>Previous place</source>
        <translation>前の箇所</translation>
    </message>
    <message>
        <source>Next place</source>
        <translation>次の箇所</translation>
    </message>
    <message>
        <source>Show the rule in the tree</source>
        <translation>ルールをツリーに表示</translation>
    </message>
    <message>
        <source>Stored text</source>
        <translation>保存されたテキスト</translation>
    </message>
    <message>
        <source>Text in the file</source>
        <translation>ファイルのテキスト</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1/%2</translation>
    </message>
    <message>
        <source>Choose a rule to compare its text with the file.</source>
        <translation>ルールを選択すると、そのテキストをファイルと比較します。</translation>
    </message>
    <message>
        <source>%1 cannot be read.</source>
        <translation>%1 を読み取れません。</translation>
    </message>
    <message>
        <source>No line differs.</source>
        <translation>異なる行はありません。</translation>
    </message>
    <message>
        <source>Lines that differ: %1 of %2.</source>
        <translation>異なる行: %1/%2。</translation>
    </message>
    <message>
        <source>Only the first %1 lines are shown.</source>
        <translation>最初の %1 行だけを表示しています。</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::ControlView</name>
    <message>
        <source>Commands</source>
        <translation>コマンド</translation>
    </message>
    <message>
        <source>Rule catalogue</source>
        <translation>ルールカタログ</translation>
    </message>
    <message>
        <source>Descriptions</source>
        <translation>説明</translation>
    </message>
    <message>
        <source>Scroll the attributes</source>
        <translation>属性のスクロール</translation>
    </message>
    <message>
        <source>Source file</source>
        <translation>ソースファイル</translation>
    </message>
    <message>
        <source>Lists of the rule</source>
        <translation>ルールのリスト</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::EncodingBox</name>
    <message>
        <source>UTF-8, else ISO-8859-1</source>
        <translation>UTF-8、それ以外は ISO-8859-1</translation>
    </message>
    <message>
        <source>Unicode</source>
        <translation>Unicode</translation>
    </message>
    <message>
        <source>Western European</source>
        <translation>西ヨーロッパ</translation>
    </message>
    <message>
        <source>Western European, Windows</source>
        <translation>西ヨーロッパ、Windows</translation>
    </message>
    <message>
        <source>Japanese, Windows</source>
        <translation>日本語、Windows</translation>
    </message>
    <message>
        <source>Japanese, Unix</source>
        <translation>日本語、Unix</translation>
    </message>
    <message>
        <source>Korean</source>
        <translation>韓国語</translation>
    </message>
    <message>
        <source>EBCDIC, North America</source>
        <translation>EBCDIC、北米</translation>
    </message>
    <message>
        <source>EBCDIC, German</source>
        <translation>EBCDIC、ドイツ語</translation>
    </message>
    <message>
        <source>EBCDIC, international</source>
        <translation>EBCDIC、国際</translation>
    </message>
    <message>
        <source>EBCDIC, Unix services</source>
        <translation>EBCDIC、Unix サービス</translation>
    </message>
    <message>
        <source>EBCDIC, Japanese</source>
        <translation>EBCDIC、日本語</translation>
    </message>
    <message>
        <source>EBCDIC, Korean</source>
        <translation>EBCDIC、韓国語</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Encodings</source>
        <translation>エンコーディング</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::FailureBar</name>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Close this notice</source>
        <translation>この通知を閉じる</translation>
    </message>
    <message>
        <source>Failure</source>
        <translation>エラー</translation>
    </message>
    <message>
        <source>%1 (and %2 earlier)</source>
        <translation>%1 (ほかに以前のエラー %2 件)</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::FindBar</name>
    <message>
        <source>&amp;Find:</source>
        <translation>検索(&amp;F):</translation>
    </message>
    <message>
        <source>Text to find</source>
        <translation>検索するテキスト</translation>
    </message>
    <message>
        <source>Match &amp;case</source>
        <translation>大文字と小文字を区別(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Whole word</source>
        <translation>単語単位(&amp;W)</translation>
    </message>
    <message>
        <source>Previous match (Shift+F3)</source>
        <translation>前を検索 (Shift+F3)</translation>
    </message>
    <message>
        <source>Previous match</source>
        <translation>前を検索</translation>
    </message>
    <message>
        <source>Next match (F3)</source>
        <translation>次を検索 (F3)</translation>
    </message>
    <message>
        <source>Next match</source>
        <translation>次を検索</translation>
    </message>
    <message>
        <source>Matches</source>
        <translation>一致</translation>
    </message>
    <message>
        <source>continued at the beginning</source>
        <translation>先頭から続けました</translation>
    </message>
    <message>
        <source>continued at the end</source>
        <translation>末尾から続けました</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>No match</source>
        <translation>一致なし</translation>
    </message>
    <message>
        <source>%1 matches</source>
        <translation>%1 件一致</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::FindingModel</name>
    <message>
        <source>Verdict</source>
        <translation>判定</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>ルール</translation>
    </message>
    <message>
        <source>File</source>
        <translation>ファイル</translation>
    </message>
    <message>
        <source>Old rows</source>
        <translation>元の行</translation>
    </message>
    <message>
        <source>New rows</source>
        <translation>新しい行</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::Locator</name>
    <message>
        <source>Locator</source>
        <translation>ロケーター</translation>
    </message>
    <message>
        <source>Go to a function, rule set, rule or program</source>
        <translation>ビジネス機能、ルールセット、ルール、プログラムへ移動</translation>
    </message>
    <message>
        <source>Part of a name</source>
        <translation>名前の一部</translation>
    </message>
    <message>
        <source>Matches</source>
        <translation>一致</translation>
    </message>
    <message>
        <source>Type a part of a name, or several parts with blanks between them.</source>
        <translation>名前の一部を入力してください。空白で区切って複数入力することもできます。</translation>
    </message>
    <message>
        <source>No name matches.</source>
        <translation>一致する名前がありません。</translation>
    </message>
    <message>
        <source>Enter goes to the marked one, Escape closes.</source>
        <translation>Enter で選択中の項目へ移動し、Esc で閉じます。</translation>
    </message>
    <message>
        <source>Searching... %1 %</source>
        <translation>検索中... %1 %</translation>
    </message>
    <message>
        <source>Searching for better matches... %1 %. Enter goes to the marked one.</source>
        <translation>よりよい一致を検索中... %1 %。Enter で選択中の項目へ移動します。</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::LocatorModel</name>
    <message>
        <source>Business function</source>
        <translation>ビジネス機能</translation>
    </message>
    <message>
        <source>Rule set</source>
        <translation>ルールセット</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>ルール</translation>
    </message>
    <message>
        <source>%1 program</source>
        <translation>%1 プログラム</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::MainWindow</name>
    <message>
        <source>Programs</source>
        <translation>プログラム</translation>
    </message>
    <message>
        <source>Business Rules</source>
        <translation>ビジネスルール</translation>
    </message>
    <message>
        <source>QMRules Workbench</source>
        <translation>QMRules Workbench</translation>
    </message>
    <message>
        <source>Open Workspace</source>
        <translation>ワークスペースを開く</translation>
    </message>
    <message>
        <source>Validation</source>
        <translation>検証</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::NewWorkspaceDialog</name>
    <message>
        <source>&amp;Scan the programs now</source>
        <translation>今すぐプログラムをスキャンする(&amp;S)</translation>
    </message>
    <message>
        <source>New Workspace</source>
        <translation>新しいワークスペース</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>参照(&amp;B)...</translation>
    </message>
    <message>
        <source>Source &amp;folder:</source>
        <translation>ソースフォルダー(&amp;F):</translation>
    </message>
    <message>
        <source>&amp;Project:</source>
        <translation>プロジェクト(&amp;P):</translation>
    </message>
    <message>
        <source>&amp;Encoding of the sources:</source>
        <translation>ソースのエンコーディング(&amp;E):</translation>
    </message>
    <message>
        <source>&amp;Create</source>
        <translation>作成(&amp;C)</translation>
    </message>
    <message>
        <source>Folder of the Sources</source>
        <translation>ソースのフォルダー</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::OptionPage</name>
    <message>
        <source>Options of this project</source>
        <translation>このプロジェクトのオプション</translation>
    </message>
    <message>
        <source>Options of the workspace, for all projects</source>
        <translation>ワークスペースのオプション (全プロジェクト共通)</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::OptionsWindow</name>
    <message>
        <source>No option matches.</source>
        <translation>一致するオプションがありません。</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>オプション</translation>
    </message>
    <message>
        <source>Search options</source>
        <translation>オプションの検索</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>ページ</translation>
    </message>
    <message>
        <source>Gives the options of this page the values that they had at first</source>
        <translation>このページのオプションを初期値に戻します</translation>
    </message>
    <message>
        <source>Options: %1</source>
        <translation>オプション: %1</translation>
    </message>
    <message>
        <source>The options were not stored, and are as they were.</source>
        <translation>オプションは保存されず、元のままです。</translation>
    </message>
    <message>
        <source>Drop the changes that you have made?</source>
        <translation>変更を破棄しますか?</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::ProgramModel</name>
    <message>
        <source>%1
%2, lines: %3</source>
        <translation>%1
%2、行数: %3</translation>
    </message>
    <message>
        <source>Rules: %1</source>
        <translation>ルール: %1</translation>
    </message>
    <message>
        <source>Program</source>
        <translation>プログラム</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>言語</translation>
    </message>
    <message>
        <source>Rules</source>
        <translation>ルール</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::ProgramsPane</name>
    <message>
        <source>Filter programs</source>
        <translation>プログラムの絞り込み</translation>
    </message>
    <message>
        <source>Programs</source>
        <translation>プログラム</translation>
    </message>
    <message>
        <source>The project has no programs yet. Choose File &gt; Scan Sources to find them.</source>
        <translation>このプロジェクトにはまだプログラムがありません。[ファイル] &gt; [ソースのスキャン] で探してください。</translation>
    </message>
    <message>
        <source>No program&apos;s name or file has this text.</source>
        <translation>名前またはファイル名にこのテキストを含むプログラムはありません。</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::ProgressPanel</name>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Stop this work (Esc)</source>
        <translation>この処理を中止 (Esc)</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>進行状況</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::QtToolBar</name>
    <message>
        <source>More commands</source>
        <translation>その他のコマンド</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::QtUpDown</name>
    <message>
        <source>Up</source>
        <translation>上へ</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>下へ</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::ResultsPane</name>
    <message>
        <source>Filter by verdict, rule or file</source>
        <translation>判定、ルール、ファイルで絞り込み</translation>
    </message>
    <message>
        <source>Results of the validation</source>
        <translation>検証の結果</translation>
    </message>
    <message>
        <source>No result has this text.</source>
        <translation>このテキストを含む結果はありません。</translation>
    </message>
    <message>
        <source>No rule has been validated yet. Check rules and choose Validate.</source>
        <translation>まだ検証されたルールはありません。ルールにチェックを付けて［検証］を選択してください。</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::RowBar</name>
    <message>
        <source>&amp;Go to row:</source>
        <translation>行へ移動(&amp;G):</translation>
    </message>
    <message>
        <source>Row number</source>
        <translation>行番号</translation>
    </message>
    <message>
        <source>of %1</source>
        <translation>/ %1</translation>
    </message>
    <message>
        <source>Rows go from 1 to %1.</source>
        <translation>行は 1 から %1 までです。</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>行</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::RowMargin</name>
    <message>
        <source>Row numbers</source>
        <translation>行番号</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::SourceView</name>
    <message>
        <source>Source viewer</source>
        <translation>ソースビューアー</translation>
    </message>
    <message>
        <source>F&amp;ile:</source>
        <translation>ファイル(&amp;I):</translation>
    </message>
    <message>
        <source>File of the program</source>
        <translation>プログラムのファイル</translation>
    </message>
    <message>
        <source>Why no source is shown</source>
        <translation>ソースが表示されない理由</translation>
    </message>
    <message>
        <source>Place in the source</source>
        <translation>ソース内の位置</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>コピー(&amp;C)</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>すべて選択(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Find…</source>
        <translation>検索(&amp;F)…</translation>
    </message>
    <message>
        <source>Find &amp;Next</source>
        <translation>次を検索(&amp;N)</translation>
    </message>
    <message>
        <source>Find &amp;Previous</source>
        <translation>前を検索(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Go to Row…</source>
        <translation>行へ移動(&amp;G)…</translation>
    </message>
    <message>
        <source>Next Se&amp;gment</source>
        <translation>次のセグメント(&amp;G)</translation>
    </message>
    <message>
        <source>Pre&amp;vious Segment</source>
        <translation>前のセグメント(&amp;V)</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>拡大(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>縮小(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Reset Zoom</source>
        <translation>標準の大きさに戻す(&amp;R)</translation>
    </message>
    <message>
        <source>No source is on view.</source>
        <translation>ソースは表示されていません。</translation>
    </message>
    <message>
        <source>Reading %1…</source>
        <translation>%1 を読み込み中…</translation>
    </message>
    <message>
        <source>%1 cannot be shown.</source>
        <translation>%1 を表示できません。</translation>
    </message>
    <message>
        <source>Row %1, column %2</source>
        <translation>行 %1、桁 %2</translation>
    </message>
    <message>
        <source>Text in row %1 selected</source>
        <translation>行 %1 のテキストを選択中</translation>
    </message>
    <message>
        <source>Text in rows %1 to %2 selected</source>
        <translation>行 %1 ~ %2 のテキストを選択中</translation>
    </message>
    <message>
        <source>Row %1 selected</source>
        <translation>行 %1 を選択中</translation>
    </message>
    <message>
        <source>Rows %1 to %2 selected</source>
        <translation>行 %1 ~ %2 を選択中</translation>
    </message>
    <message>
        <source>No segment begins below this row.</source>
        <translation>この行より下で始まるセグメントはありません。</translation>
    </message>
    <message>
        <source>No segment begins above this row.</source>
        <translation>この行より上で始まるセグメントはありません。</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::SplitterBar</name>
    <message>
        <source>Line between the left and the right pane</source>
        <translation>左右のペインの間の線</translation>
    </message>
    <message>
        <source>Line between the upper and the lower pane</source>
        <translation>上下のペインの間の線</translation>
    </message>
    <message>
        <source>The arrow keys move it, Enter leads back</source>
        <translation>方向キーで動かし、Enter で元に戻ります</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::StartPage</name>
    <message>
        <source>Business rules of legacy programs</source>
        <translation>レガシープログラムのビジネスルール</translation>
    </message>
    <message>
        <source>A workspace is a folder of program sources with a catalogue of business rules beside them. The sources stay as they are.</source>
        <translation>ワークスペースとは、プログラムソースのフォルダーにビジネスルールのカタログを加えたものです。ソースは変更されません。</translation>
    </message>
    <message>
        <source>&amp;Open Workspace...</source>
        <translation>ワークスペースを開く(&amp;O)...</translation>
    </message>
    <message>
        <source>A folder that holds a workspace already.</source>
        <translation>すでにワークスペースのあるフォルダーを開きます。</translation>
    </message>
    <message>
        <source>&amp;New Workspace...</source>
        <translation>新しいワークスペース(&amp;N)...</translation>
    </message>
    <message>
        <source>Makes a workspace over a folder of sources, and scans the programs in it.</source>
        <translation>ソースのフォルダーにワークスペースを作成し、その中のプログラムをスキャンします。</translation>
    </message>
    <message>
        <source>Last opened</source>
        <translation>最近開いたもの</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::TextBar</name>
    <message>
        <source>Close (Esc)</source>
        <translation>閉じる (Esc)</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::TextListEditor</name>
    <message>
        <source>Remove</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>上へ移動</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>下へ移動</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>追加</translation>
    </message>
    <message>
        <source>Choose Folder...</source>
        <translation>フォルダーの選択...</translation>
    </message>
    <message>
        <source>Choose a Folder of Copybooks</source>
        <translation>コピーブックのフォルダーの選択</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::WindowMenus</name>
    <message>
        <source>&amp;File</source>
        <translation>ファイル(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;New Workspace...</source>
        <translation>新しいワークスペース(&amp;N)...</translation>
    </message>
    <message>
        <source>&amp;Open Workspace...</source>
        <translation>ワークスペースを開く(&amp;O)...</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>最近使ったワークスペース(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Close Workspace</source>
        <translation>ワークスペースを閉じる(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Scan Sources</source>
        <translation>ソースのスキャン(&amp;S)</translation>
    </message>
    <message>
        <source>O&amp;ptions...</source>
        <translation>オプション(&amp;P)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>終了(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Navigate</source>
        <translation>移動(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Go to...</source>
        <translation>指定先へ移動(&amp;G)...</translation>
    </message>
    <message>
        <source>&amp;Programs</source>
        <translation>プログラム(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Source</source>
        <translation>ソース(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Rules</source>
        <translation>ルール(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>表示(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Larger Letters</source>
        <translation>文字を大きく(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Smaller Letters</source>
        <translation>文字を小さく(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Normal Letters</source>
        <translation>標準の文字サイズ(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Restore First Layout</source>
        <translation>レイアウトを初期状態に戻す(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>言語(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Colours</source>
        <translation>配色(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;System</source>
        <translation>システムに合わせる(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>ライト(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>ダーク(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>ヘルプ(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Keyboard</source>
        <translation>キーボード(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>バージョン情報(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Validation</source>
        <translation>検証(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Move the Lines between Panes</source>
        <translation>ペインの間の線を動かす(&amp;M)</translation>
    </message>
    <message>
        <source>Lar&amp;ger Pane</source>
        <translation>ペインを大きくする(&amp;G)</translation>
    </message>
    <message>
        <source>Sm&amp;aller Pane</source>
        <translation>ペインを小さくする(&amp;A)</translation>
    </message>
</context>
<context>
    <name>qmrules::desktop::WorkspaceDesk</name>
    <message>
        <source>%1 is not in the tree now.</source>
        <translation>%1 は現在ツリーにありません。</translation>
    </message>
    <message>
        <source>Scan Sources</source>
        <translation>ソースのスキャン</translation>
    </message>
</context>
</TS>
