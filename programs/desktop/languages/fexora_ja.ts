<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>fexora::desktop::AmountField</name>
    <message>
        <source>Amount</source>
        <translation>金額</translation>
    </message>
    <message>
        <source>Amount, or a calculation (Ctrl+L)</source>
        <translation>金額または計算式 (Ctrl+L)</translation>
    </message>
    <message>
        <source>What was read</source>
        <translation>読み取った内容</translation>
    </message>
    <message>
        <source>Source currency: %1</source>
        <translation>換算元の通貨: %1</translation>
    </message>
    <message>
        <source>%1 – choose another (Ctrl+K)</source>
        <translation>%1 – 変更 (Ctrl+K)</translation>
    </message>
    <message>
        <source>%1 instead (Alt+R)</source>
        <translation>%1 にする (Alt+R)</translation>
    </message>
    <message>
        <source>Read as %1</source>
        <translation>%1 と読みました</translation>
    </message>
</context>
<context>
    <name>AmountReading</name>
    <message>
        <source>A number is missing</source>
        <translation>数がありません</translation>
    </message>
    <message>
        <source>A parenthesis has no partner</source>
        <translation>括弧が対になっていません</translation>
    </message>
    <message>
        <source>No day; write it like %1</source>
        <translation>日付ではありません。例: %1</translation>
    </message>
    <message>
        <source>Divided by zero</source>
        <translation>0 で割っています</translation>
    </message>
    <message>
        <source>Too large a number</source>
        <translation>数が大きすぎます</translation>
    </message>
    <message>
        <source>No amount; write it like %1</source>
        <translation>金額ではありません。例: %1</translation>
    </message>
    <message>
        <source>Not a currency: %1</source>
        <translation>通貨ではありません: %1</translation>
    </message>
    <message>
        <source>Not a currency: %1; perhaps %2</source>
        <translation>通貨ではありません: %1（%2 でしょうか）</translation>
    </message>
    <message>
        <source>Two currencies in one calculation</source>
        <translation>一つの計算に二つの通貨があります</translation>
    </message>
    <message>
        <source>“%1” was read as %2</source>
        <translation>「%1」は %2 と読みました</translation>
    </message>
    <message>
        <source>%1: hundredths of %2</source>
        <translation>%1: %2 の百分の一</translation>
    </message>
    <message>
        <source>%1, in troy ounces</source>
        <translation>%1（トロイオンス単位）</translation>
    </message>
    <message>
        <source>That day is yet to come</source>
        <translation>その日はまだ来ていません</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::ConverterWindow</name>
    <message>
        <source>Converted amounts</source>
        <translation>換算した金額</translation>
    </message>
    <message>
        <source>+ Add currency</source>
        <translation>+ 通貨を追加</translation>
    </message>
    <message>
        <source>Add currencies (Ctrl+F)</source>
        <translation>通貨を追加 (Ctrl+F)</translation>
    </message>
    <message>
        <source>Swap with the first line</source>
        <translation>最初の行と入れ替え</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>メニュー</translation>
    </message>
    <message>
        <source>&amp;Amount</source>
        <translation>金額(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Other reading of the amount</source>
        <translation>金額の別の読み方(&amp;O)</translation>
    </message>
    <message>
        <source>Convert &amp;from…</source>
        <translation>換算元(&amp;F)…</translation>
    </message>
    <message>
        <source>&amp;Swap with the first line</source>
        <translation>最初の行と入れ替え(&amp;S)</translation>
    </message>
    <message>
        <source>Add &amp;currencies…</source>
        <translation>通貨を追加(&amp;C)…</translation>
    </message>
    <message>
        <source>Copy all &amp;lines</source>
        <translation>すべての行をコピー(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Refresh rates</source>
        <translation>レートを更新(&amp;R)</translation>
    </message>
    <message>
        <source>Show &amp;Today</source>
        <translation>「今日」を表示(&amp;T)</translation>
    </message>
    <message>
        <source>S&amp;ettings…</source>
        <translation>設定(&amp;E)…</translation>
    </message>
    <message>
        <source>A&amp;bout Fexora</source>
        <translation>Fexora について(&amp;B)</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>終了(&amp;Q)</translation>
    </message>
    <message>
        <source>%1 was removed.</source>
        <translation>%1 を削除しました。</translation>
    </message>
    <message>
        <source>Undo (Ctrl+Z)</source>
        <translation>元に戻す (Ctrl+Z)</translation>
    </message>
    <message>
        <source>Today could not be started.</source>
        <translation>「今日」を起動できませんでした。</translation>
    </message>
    <message>
        <source>About Fexora</source>
        <translation>Fexora について</translation>
    </message>
    <message>
        <source>Fexora %1

Converts an amount into every currency you chose, offline, and says how old its rates are.</source>
        <translation>Fexora %1

選んだすべての通貨にオフラインで換算し、レートの古さを示します。</translation>
    </message>
    <message>
        <source>&amp;Convert from this</source>
        <translation>この通貨から換算(&amp;C)</translation>
    </message>
    <message>
        <source>Copy the &amp;number</source>
        <translation>数値をコピー(&amp;N)</translation>
    </message>
    <message>
        <source>Copy “%1”</source>
        <translation>「%1」をコピー</translation>
    </message>
    <message>
        <source>Copy &amp;all lines</source>
        <translation>すべての行をコピー(&amp;A)</translation>
    </message>
    <message>
        <source>Move &amp;up</source>
        <translation>上へ(&amp;U)</translation>
    </message>
    <message>
        <source>Move &amp;down</source>
        <translation>下へ(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>削除(&amp;R)</translation>
    </message>
    <message>
        <source>The store could not be read; it is left as it is.</source>
        <translation>保存データを読めません。そのまま残します。</translation>
    </message>
    <message>
        <source>&amp;Find in the list</source>
        <translation>一覧内を検索(&amp;F)</translation>
    </message>
    <message>
        <source>Nothing new is kept: the store cannot be written.</source>
        <translation>書き込めないため、新しい内容は保存されません。</translation>
    </message>
    <message>
        <source>&amp;How the rate moved</source>
        <translation>レートの推移(&amp;H)</translation>
    </message>
    <message>
        <source>Rates of a &amp;day…</source>
        <translation>ある日のレート(&amp;D)…</translation>
    </message>
    <message>
        <source>No rates for that day are kept.</source>
        <translation>その日のレートはありません。</translation>
    </message>
    <message>
        <source>Get the past (1 MB)</source>
        <translation>過去を取得 (1 MB)</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>中止</translation>
    </message>
</context>
<context>
    <name>Currency</name>
    <message>
        <source>withdrawn</source>
        <translation>廃止</translation>
    </message>
    <message>
        <source>replaced by %1</source>
        <translation>%1 に移行</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::CurrencyPicker</name>
    <message>
        <source>Convert from</source>
        <translation>換算元</translation>
    </message>
    <message>
        <source>Add currencies</source>
        <translation>通貨を追加</translation>
    </message>
    <message>
        <source>Code, name, sign or country</source>
        <translation>コード、名前、記号、国</translation>
    </message>
    <message>
        <source>Search currencies</source>
        <translation>通貨を検索</translation>
    </message>
    <message>
        <source>Currencies found</source>
        <translation>見つかった通貨</translation>
    </message>
    <message>
        <source>A click or Ctrl+Return ticks several</source>
        <translation>クリックか Ctrl+Enter で複数選択</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>選択</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>追加</translation>
    </message>
    <message>
        <source>%1 (%L2)</source>
        <comment>a button, as in Add (2)</comment>
        <translation>%1 (%L2)</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::DayBar</name>
    <message>
        <source>Today (Esc)</source>
        <translation>今日 (Esc)</translation>
    </message>
    <message>
        <source>Day of the rates</source>
        <translation>レートの日付</translation>
    </message>
    <message>
        <source>Back to the newest rates</source>
        <translation>最新のレートに戻る</translation>
    </message>
    <message>
        <source>At the rates of %1</source>
        <translation>%1のレートで換算</translation>
    </message>
    <message>
        <source>For %1: rates of %2</source>
        <translation>%1：%2のレート</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>rates of a day, a source</comment>
        <translation>%1、%2</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::DayPicker</name>
    <message>
        <source>Rates of a day</source>
        <translation>ある日のレート</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>表示</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::FreshnessCaption</name>
    <message>
        <source>State of the refresh</source>
        <translation>更新の状態</translation>
    </message>
    <message>
        <source>Refreshing</source>
        <translation>更新中</translation>
    </message>
    <message>
        <source>,</source>
        <comment>before an age</comment>
        <translation>、</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>中止</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>更新</translation>
    </message>
    <message>
        <source>Stop refreshing</source>
        <translation>更新を中止</translation>
    </message>
    <message>
        <source>Ask for fresh rates (F5)</source>
        <translation>新しいレートを取得 (F5)</translation>
    </message>
    <message>
        <source>Refreshing… %1 KB</source>
        <translation>更新中… %1 KB</translation>
    </message>
    <message>
        <source>Refreshing… %1 of %2 KB</source>
        <translation>更新中… %1 / %2 KB</translation>
    </message>
    <message>
        <source>State of the store</source>
        <translation>保存先の状態</translation>
    </message>
</context>
<context>
    <name>FreshnessWords</name>
    <message>
        <source>today, %1</source>
        <translation>今日 %1</translation>
    </message>
    <message>
        <source>d MMMM</source>
        <comment>a day of this year</comment>
        <translation>M月d日</translation>
    </message>
    <message>
        <source>d MMMM yyyy</source>
        <comment>a day</comment>
        <translation>yyyy年M月d日</translation>
    </message>
    <message>
        <source>dated in the future</source>
        <translation>日付が未来です</translation>
    </message>
    <message numerus="yes">
        <source>%Ln minute(s) old</source>
        <translation>
            <numerusform>%Ln 分前</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln hour(s) old</source>
        <translation>
            <numerusform>%Ln 時間前</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln day(s) old</source>
        <translation>
            <numerusform>%Ln 日前</numerusform>
        </translation>
    </message>
    <message>
        <source>bundled</source>
        <translation>同梱</translation>
    </message>
    <message>
        <source>from a file</source>
        <translation>ファイルから</translation>
    </message>
    <message>
        <source>No rates yet</source>
        <translation>レートがまだありません</translation>
    </message>
    <message>
        <source>an unknown day</source>
        <translation>日付不明</translation>
    </message>
    <message>
        <source>Rates of %1</source>
        <translation>%1 のレート</translation>
    </message>
    <message>
        <source>Rates stored %1</source>
        <translation>%1 に保存したレート</translation>
    </message>
    <message>
        <source>, </source>
        <comment>between parts</comment>
        <translation>、</translation>
    </message>
    <message>
        <source>today</source>
        <translation>今日</translation>
    </message>
    <message>
        <source>less than a minute old</source>
        <translation>1 分未満前</translation>
    </message>
    <message>
        <source>rate of %1</source>
        <translation>%1のレート</translation>
    </message>
    <message>
        <source>%1 %</source>
        <comment>a change in percent</comment>
        <translation>%1%</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::HistoryThread</name>
    <message>
        <source>The rates are not kept for later: %1</source>
        <translation>レートは後のために保存されません: %1</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::LinesFilter</name>
    <message>
        <source>Find in the list</source>
        <translation>一覧内を検索</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::LinesModel</name>
    <message>
        <source>%1, %2</source>
        <translation>%1、%2</translation>
    </message>
    <message>
        <source>no rate</source>
        <translation>レートなし</translation>
    </message>
    <message>
        <source>too large a number</source>
        <translation>数が大きすぎます</translation>
    </message>
    <message>
        <source>no rate for that day</source>
        <translation>その日のレートなし</translation>
    </message>
    <message>
        <source>rate of %1</source>
        <translation>%1のレート</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a rate&apos;s day, a source</comment>
        <translation>%1、%2</translation>
    </message>
    <message>
        <source>as printed</source>
        <translation>公表値</translation>
    </message>
    <message>
        <source>from two printed ones</source>
        <translation>公表値二つから</translation>
    </message>
    <message>
        <source>by a fixed ratio</source>
        <translation>固定比率</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::NoticeBar</name>
    <message>
        <source>Put away</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>メッセージ</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::PastImport</name>
    <message>
        <source>Getting the past…</source>
        <translation>過去のレートを取得中…</translation>
    </message>
    <message>
        <source>Getting the past… %1 KB</source>
        <translation>過去のレートを取得中… %1 KB</translation>
    </message>
    <message>
        <source>Getting the past… %1 of %2 KB</source>
        <translation>過去のレートを取得中… %1 / %2 KB</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::PickerModel</name>
    <message>
        <source>%1, ticked</source>
        <translation>%1、選択済み</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::PlotPanel</name>
    <message>
        <source>%1 days</source>
        <translation>%1日</translation>
    </message>
    <message>
        <source>1 year</source>
        <translation>1年</translation>
    </message>
    <message>
        <source>%1 years</source>
        <translation>%1年</translation>
    </message>
    <message>
        <source>All</source>
        <translation>すべて</translation>
    </message>
    <message>
        <source>Change from the first day to the last</source>
        <translation>最初の日から最後の日までの変化</translation>
    </message>
    <message>
        <source>Getting the past</source>
        <translation>過去のレートの取得</translation>
    </message>
    <message>
        <source>%1; dotted where unknown</source>
        <comment>a source</comment>
        <translation>%1、点線はレート不明</translation>
    </message>
    <message>
        <source>%1, %2 to %3</source>
        <comment>a source of rates, first and last day</comment>
        <translation>%1、%2～%3</translation>
    </message>
    <message>
        <source>No past rates of this pair are known.</source>
        <translation>この組み合わせの過去のレートはありません。</translation>
    </message>
    <message>
        <source>Only the rate of %1 is known.</source>
        <translation>%1のレートだけがあります。</translation>
    </message>
    <message>
        <source>Each refresh adds a day.</source>
        <translation>更新のたびに1日分が加わります。</translation>
    </message>
    <message>
        <source>Each refresh adds a day. The European Central Bank publishes its rates since 1999, some 40 currencies.</source>
        <translation>更新のたびに1日分が加わります。欧州中央銀行は1999年以降、約40通貨のレートを公表しています。</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>中止</translation>
    </message>
    <message>
        <source>Get them (1 MB)</source>
        <translation>取得する (1 MB)</translation>
    </message>
    <message>
        <source>Since 1999…</source>
        <translation>1999年以降…</translation>
    </message>
    <message>
        <source>Get the rates of the European Central Bank (1 MB)</source>
        <translation>欧州中央銀行のレートを取得する (1 MB)</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::RatePlot</name>
    <message>
        <source>%1, %2</source>
        <comment>a rate and its day</comment>
        <translation>%1、%2</translation>
    </message>
    <message>
        <source>first %1; lowest %2; highest %3; last %4</source>
        <translation>最初 %1、最低 %2、最高 %3、最後 %4</translation>
    </message>
    <message>
        <source>ddd d MMMM yyyy</source>
        <comment>a day with its weekday</comment>
        <translation>yyyy年M月d日(ddd)</translation>
    </message>
    <message>
        <source>d MMM</source>
        <comment>a day on an axis</comment>
        <translation>M月d日</translation>
    </message>
    <message>
        <source>MMM</source>
        <comment>a month on an axis</comment>
        <translation>M月</translation>
    </message>
    <message>
        <source>yyyy</source>
        <comment>a year on an axis</comment>
        <translation>yyyy年</translation>
    </message>
    <message>
        <source>How the rate moved</source>
        <translation>レートの推移</translation>
    </message>
</context>
<context>
    <name>ResponseError</name>
    <message>
        <source>This computer cannot ask for rates right now.</source>
        <translation>このコンピューターは今レートを取得できません。</translation>
    </message>
    <message>
        <source>The rates service was not found. Is this computer online?</source>
        <translation>レートのサービスが見つかりません。オンラインですか？</translation>
    </message>
    <message>
        <source>The rates service could not be reached.</source>
        <translation>レートのサービスに接続できません。</translation>
    </message>
    <message>
        <source>The rates service took too long to answer.</source>
        <translation>レートのサービスの応答が遅すぎます。</translation>
    </message>
    <message>
        <source>The answer was too large to be read.</source>
        <translation>応答が大きすぎます。</translation>
    </message>
    <message>
        <source>The answer was not from a rates service. Does this network ask for a login?</source>
        <translation>レートのサービスからの応答ではありません。ログインが必要なネットワークですか？</translation>
    </message>
    <message>
        <source>there are none</source>
        <translation>一つもありません</translation>
    </message>
    <message>
        <source>the US dollar is missing</source>
        <translation>米ドルがありません</translation>
    </message>
    <message>
        <source>%1 moved from %2 to %3</source>
        <translation>%1 が %2 から %3 に</translation>
    </message>
    <message>
        <source>the check of the rates failed</source>
        <translation>レートの確認に失敗しました</translation>
    </message>
    <message>
        <source>The rates service has no rates right now (%1).</source>
        <translation>レートのサービスには今レートがありません（%1）。</translation>
    </message>
    <message>
        <source>The new rates look wrong and were not taken: %1.</source>
        <translation>新しいレートは正しくないようなので使いません：%1。</translation>
    </message>
    <message>
        <source>the rate of %1 is %3</source>
        <translation>%1 のレートが %3 です</translation>
    </message>
    <message>
        <source>one US dollar is %3 US dollars</source>
        <translation>1 米ドルが %3 米ドルになっています</translation>
    </message>
    <message>
        <source>they are quoted against %1, not against the US dollar</source>
        <translation>米ドルではなく %1 に対するレートです</translation>
    </message>
    <message>
        <source>%1 is there twice, as %2 and as %3</source>
        <translation>%1 が %2 と %3 の二通りあります</translation>
    </message>
    <message>
        <source>%3 of the %2 currencies leaped</source>
        <translation>%2 通貨のうち %3 通貨が急変しています</translation>
    </message>
    <message>
        <source>nearly all moved at once, by a factor of %3</source>
        <translation>ほぼすべてが同時に %3 倍動いています</translation>
    </message>
    <message>
        <source>%1 is not there any more</source>
        <translation>%1 がなくなっています</translation>
    </message>
    <message>
        <source>two sources contradict each other: %1 is %2 in one, %3 in the other</source>
        <translation>二つの出所が矛盾しています: %1 が一方では %2、他方では %3 です</translation>
    </message>
    <message>
        <source>they are of the future, %3</source>
        <translation>未来の日付です（%3）</translation>
    </message>
    <message>
        <source>they are of %3, older than those of %2</source>
        <translation>%3 のもので、%2 のものより古いです</translation>
    </message>
    <message>
        <source>The rates service could not prove who it is. Is this computer&apos;s clock right?</source>
        <translation>レートのサービスの身元を確認できません。このコンピューターの時計は合っていますか。</translation>
    </message>
    <message>
        <source>Nobody is asked for rates: see the settings.</source>
        <translation>レートはどこにも問い合わせません。設定をご覧ください。</translation>
    </message>
    <message>
        <source>Left out of the new rates: %1.</source>
        <translation>新しいレートから除きました: %1。</translation>
    </message>
    <message>
        <source>A leap in the new rates: %1.</source>
        <translation>新しいレートに急変があります: %1。</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::SettingsPage</name>
    <message>
        <source>&amp;Separate groups of digits</source>
        <translation>桁を区切る(&amp;S)</translation>
    </message>
    <message>
        <source>Light, or as the desktop</source>
        <translation>ライト、またはデスクトップに従う</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>ダーク</translation>
    </message>
    <message>
        <source>Names</source>
        <translation>名前</translation>
    </message>
    <message>
        <source>Codes</source>
        <translation>コード</translation>
    </message>
    <message>
        <source>As in the converter</source>
        <translation>換算と同じ</translation>
    </message>
    <message>
        <source>The last amount</source>
        <translation>最後の金額</translation>
    </message>
    <message>
        <source>Rates of one unit</source>
        <translation>1 単位のレート</translation>
    </message>
    <message>
        <source>&amp;Open at login</source>
        <translation>ログイン時に開く(&amp;O)</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Both windows</source>
        <translation>両方のウィンドウ</translation>
    </message>
    <message>
        <source>&amp;Digits after the mark</source>
        <translation>小数の桁数(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Appearance</source>
        <translation>外観(&amp;A)</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>今日</translation>
    </message>
    <message>
        <source>S&amp;hows</source>
        <translation>表示(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Unit of</source>
        <translation>単位(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Currencies</source>
        <translation>通貨(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Named by</source>
        <translation>名称(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Lines at most</source>
        <translation>最大行数(&amp;L)</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>選択…</translation>
    </message>
    <message>
        <source>Currencies in Today</source>
        <translation>「今日」の通貨</translation>
    </message>
    <message>
        <source>One unit of</source>
        <translation>1 単位の通貨</translation>
    </message>
    <message>
        <source>Amounts, also in the terminal</source>
        <translation>金額 (端末でも)</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>自動</translation>
    </message>
    <message>
        <source>exchange-api, daily</source>
        <translation>exchange-api（毎日）</translation>
    </message>
    <message>
        <source>European Central Bank</source>
        <translation>欧州中央銀行</translation>
    </message>
    <message>
        <source>The rates service</source>
        <translation>レートのサービス</translation>
    </message>
    <message>
        <source>Nowhere</source>
        <translation>なし</translation>
    </message>
    <message>
        <source>&amp;Fresh rates from</source>
        <translation>最新レートの取得元(&amp;F)</translation>
    </message>
    <message>
        <source>Draw how each rate &amp;moved</source>
        <translation>レートの推移を描く(&amp;M)</translation>
    </message>
</context>
<context>
    <name>SourceWords</name>
    <message>
        <source>European Central Bank</source>
        <translation>欧州中央銀行</translation>
    </message>
    <message>
        <source>The rates service</source>
        <translation>レートサービス</translation>
    </message>
    <message>
        <source>bundled</source>
        <translation>同梱</translation>
    </message>
    <message>
        <source>Daily tables in %1</source>
        <translation>%1建ての日次表</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::TodayModel</name>
    <message>
        <source>%1, %2</source>
        <translation>%1、%2</translation>
    </message>
    <message>
        <source>in %1</source>
        <translation>%1 建て</translation>
    </message>
    <message>
        <source>in %1 days %2</source>
        <translation>%1日間で%2</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::TodayWindow</name>
    <message>
        <source>Fexora Today</source>
        <translation>Fexora 今日</translation>
    </message>
    <message>
        <source>Amounts</source>
        <translation>金額</translation>
    </message>
    <message>
        <source>Converted amount</source>
        <translation>換算する金額</translation>
    </message>
    <message>
        <source>Age of the rates</source>
        <translation>レートの古さ</translation>
    </message>
    <message>
        <source>rates ⇄</source>
        <translation>レート ⇄</translation>
    </message>
    <message>
        <source>Turn the rates around</source>
        <translation>レートを逆にする</translation>
    </message>
    <message>
        <source>&amp;Open the converter</source>
        <translation>換算を開く(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Turn the rates around</source>
        <translation>レートを逆にする(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>閉じる(&amp;C)</translation>
    </message>
    <message>
        <source>The store could not be read.</source>
        <translation>保存データを読めません。</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1日</translation>
    </message>
</context>
</TS>
