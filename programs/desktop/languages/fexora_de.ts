<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>fexora::desktop::AmountField</name>
    <message>
        <source>Amount</source>
        <translation>Betrag</translation>
    </message>
    <message>
        <source>Amount, or a calculation (Ctrl+L)</source>
        <translation>Betrag oder Rechnung (Strg+L)</translation>
    </message>
    <message>
        <source>What was read</source>
        <translation>Was gelesen wurde</translation>
    </message>
    <message>
        <source>Source currency: %1</source>
        <translation>Ausgangswährung: %1</translation>
    </message>
    <message>
        <source>%1 – choose another (Ctrl+K)</source>
        <translation>%1 – andere wählen (Strg+K)</translation>
    </message>
    <message>
        <source>%1 instead (Alt+R)</source>
        <translation>stattdessen %1 (Alt+R)</translation>
    </message>
    <message>
        <source>Read as %1</source>
        <translation>Gelesen als %1</translation>
    </message>
</context>
<context>
    <name>AmountReading</name>
    <message>
        <source>A number is missing</source>
        <translation>Eine Zahl fehlt</translation>
    </message>
    <message>
        <source>A parenthesis has no partner</source>
        <translation>Eine Klammer hat kein Gegenstück</translation>
    </message>
    <message>
        <source>No day; write it like %1</source>
        <translation>Kein Tag; zum Beispiel %1</translation>
    </message>
    <message>
        <source>Divided by zero</source>
        <translation>Durch null geteilt</translation>
    </message>
    <message>
        <source>Too large a number</source>
        <translation>Zu große Zahl</translation>
    </message>
    <message>
        <source>No amount; write it like %1</source>
        <translation>Kein Betrag; zum Beispiel %1</translation>
    </message>
    <message>
        <source>Not a currency: %1</source>
        <translation>Keine Währung: %1</translation>
    </message>
    <message>
        <source>Not a currency: %1; perhaps %2</source>
        <translation>Keine Währung: %1; vielleicht %2</translation>
    </message>
    <message>
        <source>Two currencies in one calculation</source>
        <translation>Zwei Währungen in einer Rechnung</translation>
    </message>
    <message>
        <source>“%1” was read as %2</source>
        <translation>„%1“ wurde als %2 gelesen</translation>
    </message>
    <message>
        <source>%1: hundredths of %2</source>
        <translation>%1: Hundertstel von %2</translation>
    </message>
    <message>
        <source>%1, in troy ounces</source>
        <translation>%1, in Feinunzen</translation>
    </message>
    <message>
        <source>That day is yet to come</source>
        <translation>Dieser Tag kommt erst noch</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::ConverterWindow</name>
    <message>
        <source>Converted amounts</source>
        <translation>Umgerechnete Beträge</translation>
    </message>
    <message>
        <source>+ Add currency</source>
        <translation>+ Währung hinzufügen</translation>
    </message>
    <message>
        <source>Add currencies (Ctrl+F)</source>
        <translation>Währungen hinzufügen (Strg+F)</translation>
    </message>
    <message>
        <source>Swap with the first line</source>
        <translation>Mit der ersten Zeile tauschen</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>&amp;Amount</source>
        <translation>&amp;Betrag</translation>
    </message>
    <message>
        <source>&amp;Other reading of the amount</source>
        <translation>&amp;Andere Lesart des Betrags</translation>
    </message>
    <message>
        <source>Convert &amp;from…</source>
        <translation>&amp;Umrechnen aus …</translation>
    </message>
    <message>
        <source>&amp;Swap with the first line</source>
        <translation>Mit erster Zeile &amp;tauschen</translation>
    </message>
    <message>
        <source>Add &amp;currencies…</source>
        <translation>&amp;Währungen hinzufügen …</translation>
    </message>
    <message>
        <source>Copy all &amp;lines</source>
        <translation>Alle &amp;Zeilen kopieren</translation>
    </message>
    <message>
        <source>&amp;Refresh rates</source>
        <translation>Kurse a&amp;ktualisieren</translation>
    </message>
    <message>
        <source>Show &amp;Today</source>
        <translation>&amp;Heute anzeigen</translation>
    </message>
    <message>
        <source>S&amp;ettings…</source>
        <translation>&amp;Einstellungen …</translation>
    </message>
    <message>
        <source>A&amp;bout Fexora</source>
        <translation>Über &amp;Fexora</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>Been&amp;den</translation>
    </message>
    <message>
        <source>%1 was removed.</source>
        <translation>%1 wurde entfernt.</translation>
    </message>
    <message>
        <source>Undo (Ctrl+Z)</source>
        <translation>Rückgängig (Strg+Z)</translation>
    </message>
    <message>
        <source>Today could not be started.</source>
        <translation>Heute konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>About Fexora</source>
        <translation>Über Fexora</translation>
    </message>
    <message>
        <source>Fexora %1

Converts an amount into every currency you chose, offline, and says how old its rates are.</source>
        <translation>Fexora %1

Rechnet einen Betrag ohne Netz in alle gewählten Währungen um und sagt, wie alt die Kurse sind.</translation>
    </message>
    <message>
        <source>&amp;Convert from this</source>
        <translation>&amp;Hieraus umrechnen</translation>
    </message>
    <message>
        <source>Copy the &amp;number</source>
        <translation>&amp;Zahl kopieren</translation>
    </message>
    <message>
        <source>Copy “%1”</source>
        <translation>„%1“ kopieren</translation>
    </message>
    <message>
        <source>Copy &amp;all lines</source>
        <translation>&amp;Alle Zeilen kopieren</translation>
    </message>
    <message>
        <source>Move &amp;up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>Move &amp;down</source>
        <translation>Nach &amp;unten</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>The store could not be read; it is left as it is.</source>
        <translation>Der Speicher war nicht lesbar; er bleibt, wie er ist.</translation>
    </message>
    <message>
        <source>&amp;Find in the list</source>
        <translation>&amp;In der Liste suchen</translation>
    </message>
    <message>
        <source>Nothing new is kept: the store cannot be written.</source>
        <translation>Nichts Neues wird behalten: Der Speicher ist nicht schreibbar.</translation>
    </message>
    <message>
        <source>&amp;How the rate moved</source>
        <translation>Wie sich der Kurs &amp;bewegte</translation>
    </message>
    <message>
        <source>Rates of a &amp;day…</source>
        <translation>Kurse eines &amp;Tages …</translation>
    </message>
    <message>
        <source>No rates for that day are kept.</source>
        <translation>Für diesen Tag sind keine Kurse da.</translation>
    </message>
    <message>
        <source>Get the past (1 MB)</source>
        <translation>Vergangenheit holen (1 MB)</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
</context>
<context>
    <name>Currency</name>
    <message>
        <source>withdrawn</source>
        <translation>aus dem Umlauf</translation>
    </message>
    <message>
        <source>replaced by %1</source>
        <translation>ersetzt durch %1</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::CurrencyPicker</name>
    <message>
        <source>Convert from</source>
        <translation>Umrechnen aus</translation>
    </message>
    <message>
        <source>Add currencies</source>
        <translation>Währungen hinzufügen</translation>
    </message>
    <message>
        <source>Code, name, sign or country</source>
        <translation>Kürzel, Name, Zeichen oder Land</translation>
    </message>
    <message>
        <source>Search currencies</source>
        <translation>Währungen suchen</translation>
    </message>
    <message>
        <source>Currencies found</source>
        <translation>Gefundene Währungen</translation>
    </message>
    <message>
        <source>A click or Ctrl+Return ticks several</source>
        <translation>Klick oder Strg+Eingabe hakt mehrere an</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Wählen</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
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
        <translation>Heute (Esc)</translation>
    </message>
    <message>
        <source>Day of the rates</source>
        <translation>Tag der Kurse</translation>
    </message>
    <message>
        <source>Back to the newest rates</source>
        <translation>Zurück zu den neuesten Kursen</translation>
    </message>
    <message>
        <source>At the rates of %1</source>
        <translation>Zu den Kursen vom %1</translation>
    </message>
    <message>
        <source>For %1: rates of %2</source>
        <translation>Für %1: Kurse vom %2</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>rates of a day, a source</comment>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::DayPicker</name>
    <message>
        <source>Rates of a day</source>
        <translation>Kurse eines Tages</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::FreshnessCaption</name>
    <message>
        <source>State of the refresh</source>
        <translation>Stand der Aktualisierung</translation>
    </message>
    <message>
        <source>Refreshing</source>
        <translation>Wird aktualisiert</translation>
    </message>
    <message>
        <source>,</source>
        <comment>before an age</comment>
        <translation>,</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Stop refreshing</source>
        <translation>Aktualisierung anhalten</translation>
    </message>
    <message>
        <source>Ask for fresh rates (F5)</source>
        <translation>Neue Kurse holen (F5)</translation>
    </message>
    <message>
        <source>Refreshing… %1 KB</source>
        <translation>Wird aktualisiert … %1 KB</translation>
    </message>
    <message>
        <source>Refreshing… %1 of %2 KB</source>
        <translation>Wird aktualisiert … %1 von %2 KB</translation>
    </message>
    <message>
        <source>State of the store</source>
        <translation>Zustand des Speichers</translation>
    </message>
</context>
<context>
    <name>FreshnessWords</name>
    <message>
        <source>today, %1</source>
        <translation>heute, %1</translation>
    </message>
    <message>
        <source>d MMMM</source>
        <comment>a day of this year</comment>
        <translation>d. MMMM</translation>
    </message>
    <message>
        <source>d MMMM yyyy</source>
        <comment>a day</comment>
        <translation>d. MMMM yyyy</translation>
    </message>
    <message>
        <source>dated in the future</source>
        <translation>Datum in der Zukunft</translation>
    </message>
    <message numerus="yes">
        <source>%Ln minute(s) old</source>
        <translation>
            <numerusform>%Ln Minute alt</numerusform>
            <numerusform>%Ln Minuten alt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln hour(s) old</source>
        <translation>
            <numerusform>%Ln Stunde alt</numerusform>
            <numerusform>%Ln Stunden alt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln day(s) old</source>
        <translation>
            <numerusform>%Ln Tag alt</numerusform>
            <numerusform>%Ln Tage alt</numerusform>
        </translation>
    </message>
    <message>
        <source>bundled</source>
        <translation>mitgeliefert</translation>
    </message>
    <message>
        <source>from a file</source>
        <translation>aus einer Datei</translation>
    </message>
    <message>
        <source>No rates yet</source>
        <translation>Noch keine Kurse</translation>
    </message>
    <message>
        <source>an unknown day</source>
        <translation>unbekanntem Tag</translation>
    </message>
    <message>
        <source>Rates of %1</source>
        <translation>Kurse: %1</translation>
    </message>
    <message>
        <source>Rates stored %1</source>
        <translation>Kurse, gespeichert %1</translation>
    </message>
    <message>
        <source>, </source>
        <comment>between parts</comment>
        <translation>, </translation>
    </message>
    <message>
        <source>today</source>
        <translation>heute</translation>
    </message>
    <message>
        <source>less than a minute old</source>
        <translation>unter einer Minute alt</translation>
    </message>
    <message>
        <source>rate of %1</source>
        <translation>Kurs vom %1</translation>
    </message>
    <message>
        <source>%1 %</source>
        <comment>a change in percent</comment>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::HistoryThread</name>
    <message>
        <source>The rates are not kept for later: %1</source>
        <translation>Die Kurse werden nicht für später aufgehoben: %1</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::LinesFilter</name>
    <message>
        <source>Find in the list</source>
        <translation>In der Liste suchen</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::LinesModel</name>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>no rate</source>
        <translation>kein Kurs</translation>
    </message>
    <message>
        <source>too large a number</source>
        <translation>zu große Zahl</translation>
    </message>
    <message>
        <source>no rate for that day</source>
        <translation>kein Kurs für diesen Tag</translation>
    </message>
    <message>
        <source>rate of %1</source>
        <translation>Kurs vom %1</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a rate&apos;s day, a source</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>as printed</source>
        <translation>wie veröffentlicht</translation>
    </message>
    <message>
        <source>from two printed ones</source>
        <translation>aus zwei veröffentlichten</translation>
    </message>
    <message>
        <source>by a fixed ratio</source>
        <translation>nach festem Verhältnis</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::NoticeBar</name>
    <message>
        <source>Put away</source>
        <translation>Ausblenden</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::PastImport</name>
    <message>
        <source>Getting the past…</source>
        <translation>Vergangenheit wird geholt …</translation>
    </message>
    <message>
        <source>Getting the past… %1 KB</source>
        <translation>Vergangenheit wird geholt … %1 KB</translation>
    </message>
    <message>
        <source>Getting the past… %1 of %2 KB</source>
        <translation>Vergangenheit wird geholt … %1 von %2 KB</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::PickerModel</name>
    <message>
        <source>%1, ticked</source>
        <translation>%1, angehakt</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::PlotPanel</name>
    <message>
        <source>%1 days</source>
        <translation>%1 Tage</translation>
    </message>
    <message>
        <source>1 year</source>
        <translation>1 Jahr</translation>
    </message>
    <message>
        <source>%1 years</source>
        <translation>%1 Jahre</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>Change from the first day to the last</source>
        <translation>Veränderung vom ersten Tag zum letzten</translation>
    </message>
    <message>
        <source>Getting the past</source>
        <translation>Vergangenheit wird geholt</translation>
    </message>
    <message>
        <source>%1; dotted where unknown</source>
        <comment>a source</comment>
        <translation>%1; gepunktet, wo keiner bekannt ist</translation>
    </message>
    <message>
        <source>%1, %2 to %3</source>
        <comment>a source of rates, first and last day</comment>
        <translation>%1, %2 bis %3</translation>
    </message>
    <message>
        <source>No past rates of this pair are known.</source>
        <translation>Von diesem Paar sind keine früheren Kurse bekannt.</translation>
    </message>
    <message>
        <source>Only the rate of %1 is known.</source>
        <translation>Nur der Kurs vom %1 ist bekannt.</translation>
    </message>
    <message>
        <source>Each refresh adds a day.</source>
        <translation>Mit jedem Aktualisieren kommt ein Tag dazu.</translation>
    </message>
    <message>
        <source>Each refresh adds a day. The European Central Bank publishes its rates since 1999, some 40 currencies.</source>
        <translation>Mit jedem Aktualisieren kommt ein Tag dazu. Die Europäische Zentralbank veröffentlicht ihre Kurse seit 1999, für rund 40 Währungen.</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Get them (1 MB)</source>
        <translation>Holen (1 MB)</translation>
    </message>
    <message>
        <source>Since 1999…</source>
        <translation>Seit 1999 …</translation>
    </message>
    <message>
        <source>Get the rates of the European Central Bank (1 MB)</source>
        <translation>Kurse der Europäischen Zentralbank holen (1 MB)</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::RatePlot</name>
    <message>
        <source>%1, %2</source>
        <comment>a rate and its day</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>first %1; lowest %2; highest %3; last %4</source>
        <translation>erster %1; niedrigster %2; höchster %3; letzter %4</translation>
    </message>
    <message>
        <source>ddd d MMMM yyyy</source>
        <comment>a day with its weekday</comment>
        <translation>ddd, d. MMMM yyyy</translation>
    </message>
    <message>
        <source>d MMM</source>
        <comment>a day on an axis</comment>
        <translation>d. MMM</translation>
    </message>
    <message>
        <source>MMM</source>
        <comment>a month on an axis</comment>
        <translation>MMM</translation>
    </message>
    <message>
        <source>yyyy</source>
        <comment>a year on an axis</comment>
        <translation>yyyy</translation>
    </message>
    <message>
        <source>How the rate moved</source>
        <translation>Wie sich der Kurs bewegte</translation>
    </message>
</context>
<context>
    <name>ResponseError</name>
    <message>
        <source>This computer cannot ask for rates right now.</source>
        <translation>Dieser Rechner kann gerade keine Kurse holen.</translation>
    </message>
    <message>
        <source>The rates service was not found. Is this computer online?</source>
        <translation>Der Kursdienst wurde nicht gefunden. Ist dieser Rechner online?</translation>
    </message>
    <message>
        <source>The rates service could not be reached.</source>
        <translation>Der Kursdienst war nicht erreichbar.</translation>
    </message>
    <message>
        <source>The rates service took too long to answer.</source>
        <translation>Der Kursdienst hat zu lange gebraucht.</translation>
    </message>
    <message>
        <source>The answer was too large to be read.</source>
        <translation>Die Antwort war zu groß.</translation>
    </message>
    <message>
        <source>The answer was not from a rates service. Does this network ask for a login?</source>
        <translation>Die Antwort kam nicht von einem Kursdienst. Verlangt dieses Netz eine Anmeldung?</translation>
    </message>
    <message>
        <source>there are none</source>
        <translation>es sind keine da</translation>
    </message>
    <message>
        <source>the US dollar is missing</source>
        <translation>der US-Dollar fehlt</translation>
    </message>
    <message>
        <source>%1 moved from %2 to %3</source>
        <translation>%1 ging von %2 auf %3</translation>
    </message>
    <message>
        <source>the check of the rates failed</source>
        <translation>die Prüfung der Kurse ist fehlgeschlagen</translation>
    </message>
    <message>
        <source>The rates service has no rates right now (%1).</source>
        <translation>Der Kursdienst hat gerade keine Kurse (%1).</translation>
    </message>
    <message>
        <source>The new rates look wrong and were not taken: %1.</source>
        <translation>Die neuen Kurse sehen falsch aus und wurden nicht übernommen: %1.</translation>
    </message>
    <message>
        <source>the rate of %1 is %3</source>
        <translation>der Kurs von %1 ist %3</translation>
    </message>
    <message>
        <source>one US dollar is %3 US dollars</source>
        <translation>ein US-Dollar ist %3 US-Dollar</translation>
    </message>
    <message>
        <source>they are quoted against %1, not against the US dollar</source>
        <translation>sie gelten je %1, nicht je US-Dollar</translation>
    </message>
    <message>
        <source>%1 is there twice, as %2 and as %3</source>
        <translation>%1 kommt zweimal vor, mit %2 und mit %3</translation>
    </message>
    <message>
        <source>%3 of the %2 currencies leaped</source>
        <translation>%3 der %2 Währungen sind gesprungen</translation>
    </message>
    <message>
        <source>nearly all moved at once, by a factor of %3</source>
        <translation>fast alle haben sich zugleich geändert, um den Faktor %3</translation>
    </message>
    <message>
        <source>%1 is not there any more</source>
        <translation>%1 ist nicht mehr da</translation>
    </message>
    <message>
        <source>two sources contradict each other: %1 is %2 in one, %3 in the other</source>
        <translation>zwei Quellen widersprechen sich: %1 ist %2 in der einen, %3 in der anderen</translation>
    </message>
    <message>
        <source>they are of the future, %3</source>
        <translation>sie sind aus der Zukunft, vom %3</translation>
    </message>
    <message>
        <source>they are of %3, older than those of %2</source>
        <translation>sie sind vom %3, älter als die vom %2</translation>
    </message>
    <message>
        <source>The rates service could not prove who it is. Is this computer&apos;s clock right?</source>
        <translation>Der Kursdienst konnte sich nicht ausweisen. Geht die Uhr dieses Rechners richtig?</translation>
    </message>
    <message>
        <source>Nobody is asked for rates: see the settings.</source>
        <translation>Niemand wird nach Kursen gefragt: siehe Einstellungen.</translation>
    </message>
    <message>
        <source>Left out of the new rates: %1.</source>
        <translation>Nicht übernommen: %1.</translation>
    </message>
    <message>
        <source>A leap in the new rates: %1.</source>
        <translation>Ein Sprung in den neuen Kursen: %1.</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::SettingsPage</name>
    <message>
        <source>&amp;Separate groups of digits</source>
        <translation>Ziffern&amp;gruppen trennen</translation>
    </message>
    <message>
        <source>Light, or as the desktop</source>
        <translation>Hell oder wie der Desktop</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Names</source>
        <translation>Namen</translation>
    </message>
    <message>
        <source>Codes</source>
        <translation>Kürzel</translation>
    </message>
    <message>
        <source>As in the converter</source>
        <translation>Wie im Rechner</translation>
    </message>
    <message>
        <source>The last amount</source>
        <translation>Den letzten Betrag</translation>
    </message>
    <message>
        <source>Rates of one unit</source>
        <translation>Kurse einer Einheit</translation>
    </message>
    <message>
        <source>&amp;Open at login</source>
        <translation>Beim Anmelden &amp;öffnen</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Both windows</source>
        <translation>Beide Fenster</translation>
    </message>
    <message>
        <source>&amp;Digits after the mark</source>
        <translation>Nachkomma&amp;stellen</translation>
    </message>
    <message>
        <source>&amp;Appearance</source>
        <translation>&amp;Aussehen</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>S&amp;hows</source>
        <translation>&amp;Zeigt</translation>
    </message>
    <message>
        <source>&amp;Unit of</source>
        <translation>&amp;Einheit</translation>
    </message>
    <message>
        <source>&amp;Currencies</source>
        <translation>&amp;Währungen</translation>
    </message>
    <message>
        <source>&amp;Named by</source>
        <translation>&amp;Benannt nach</translation>
    </message>
    <message>
        <source>&amp;Lines at most</source>
        <translation>&amp;Höchstens Zeilen</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Wählen …</translation>
    </message>
    <message>
        <source>Currencies in Today</source>
        <translation>Währungen in Heute</translation>
    </message>
    <message>
        <source>One unit of</source>
        <translation>Eine Einheit</translation>
    </message>
    <message>
        <source>Amounts, also in the terminal</source>
        <translation>Beträge, auch im Terminal</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>exchange-api, daily</source>
        <translation>exchange-api, täglich</translation>
    </message>
    <message>
        <source>European Central Bank</source>
        <translation>Europäische Zentralbank</translation>
    </message>
    <message>
        <source>The rates service</source>
        <translation>Der Kursdienst</translation>
    </message>
    <message>
        <source>Nowhere</source>
        <translation>Nirgends</translation>
    </message>
    <message>
        <source>&amp;Fresh rates from</source>
        <translation>&amp;Frische Kurse von</translation>
    </message>
    <message>
        <source>Draw how each rate &amp;moved</source>
        <translation>&amp;Verlauf der Kurse zeichnen</translation>
    </message>
</context>
<context>
    <name>SourceWords</name>
    <message>
        <source>European Central Bank</source>
        <translation>Europäische Zentralbank</translation>
    </message>
    <message>
        <source>The rates service</source>
        <translation>Kursdienst</translation>
    </message>
    <message>
        <source>bundled</source>
        <translation>mitgeliefert</translation>
    </message>
    <message>
        <source>Daily tables in %1</source>
        <translation>Tägliche Tabellen in %1</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::TodayModel</name>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>in %1</source>
        <translation>in %1</translation>
    </message>
    <message>
        <source>in %1 days %2</source>
        <translation>in %1 Tagen %2</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::TodayWindow</name>
    <message>
        <source>Fexora Today</source>
        <translation>Fexora Heute</translation>
    </message>
    <message>
        <source>Amounts</source>
        <translation>Beträge</translation>
    </message>
    <message>
        <source>Converted amount</source>
        <translation>Umgerechneter Betrag</translation>
    </message>
    <message>
        <source>Age of the rates</source>
        <translation>Alter der Kurse</translation>
    </message>
    <message>
        <source>rates ⇄</source>
        <translation>Kurse ⇄</translation>
    </message>
    <message>
        <source>Turn the rates around</source>
        <translation>Kurse umdrehen</translation>
    </message>
    <message>
        <source>&amp;Open the converter</source>
        <translation>&amp;Rechner öffnen</translation>
    </message>
    <message>
        <source>&amp;Turn the rates around</source>
        <translation>Kurse &amp;umdrehen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>The store could not be read.</source>
        <translation>Der Speicher war nicht lesbar.</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 Tage</translation>
    </message>
</context>
</TS>
