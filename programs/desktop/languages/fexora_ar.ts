<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>fexora::desktop::AmountField</name>
    <message>
        <source>Amount</source>
        <translation>المبلغ</translation>
    </message>
    <message>
        <source>Amount, or a calculation (Ctrl+L)</source>
        <translation>مبلغ أو عملية حسابية (Ctrl+L)</translation>
    </message>
    <message>
        <source>What was read</source>
        <translation>ما قُرئ</translation>
    </message>
    <message>
        <source>Source currency: %1</source>
        <translation>عملة المصدر: %1</translation>
    </message>
    <message>
        <source>%1 – choose another (Ctrl+K)</source>
        <translation>%1 – اختر غيرها (Ctrl+K)</translation>
    </message>
    <message>
        <source>%1 instead (Alt+R)</source>
        <translation>بل %1 (Alt+R)</translation>
    </message>
    <message>
        <source>Read as %1</source>
        <translation>قُرئ %1</translation>
    </message>
</context>
<context>
    <name>AmountReading</name>
    <message>
        <source>A number is missing</source>
        <translation>ينقص عدد</translation>
    </message>
    <message>
        <source>A parenthesis has no partner</source>
        <translation>قوس بلا مقابل</translation>
    </message>
    <message>
        <source>No day; write it like %1</source>
        <translation>ليس تاريخًا؛ اكتبه مثل %1</translation>
    </message>
    <message>
        <source>Divided by zero</source>
        <translation>قسمة على صفر</translation>
    </message>
    <message>
        <source>Too large a number</source>
        <translation>عدد كبير جدًا</translation>
    </message>
    <message>
        <source>No amount; write it like %1</source>
        <translation>ليس مبلغًا؛ اكتبه مثل %1</translation>
    </message>
    <message>
        <source>Not a currency: %1</source>
        <translation>ليست عملة: %1</translation>
    </message>
    <message>
        <source>Not a currency: %1; perhaps %2</source>
        <translation>ليست عملة: %1؛ ربما %2</translation>
    </message>
    <message>
        <source>Two currencies in one calculation</source>
        <translation>عملتان في عملية حسابية واحدة</translation>
    </message>
    <message>
        <source>“%1” was read as %2</source>
        <translation>قُرئ «%1» على أنه %2</translation>
    </message>
    <message>
        <source>%1: hundredths of %2</source>
        <translation>%1: أجزاء من مئة من %2</translation>
    </message>
    <message>
        <source>%1, in troy ounces</source>
        <translation>%1، بالأونصة الترويسية</translation>
    </message>
    <message>
        <source>That day is yet to come</source>
        <translation>هذا اليوم لم يأتِ بعد</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::ConverterWindow</name>
    <message>
        <source>Converted amounts</source>
        <translation>المبالغ المحوّلة</translation>
    </message>
    <message>
        <source>+ Add currency</source>
        <translation>+ إضافة عملة</translation>
    </message>
    <message>
        <source>Add currencies (Ctrl+F)</source>
        <translation>إضافة عملات (Ctrl+F)</translation>
    </message>
    <message>
        <source>Swap with the first line</source>
        <translation>التبديل مع السطر الأول</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>القائمة</translation>
    </message>
    <message>
        <source>&amp;Amount</source>
        <translation>ال&amp;مبلغ</translation>
    </message>
    <message>
        <source>&amp;Other reading of the amount</source>
        <translation>ال&amp;قراءة الأخرى للمبلغ</translation>
    </message>
    <message>
        <source>Convert &amp;from…</source>
        <translation>التحويل &amp;من…</translation>
    </message>
    <message>
        <source>&amp;Swap with the first line</source>
        <translation>&amp;التبديل مع السطر الأول</translation>
    </message>
    <message>
        <source>Add &amp;currencies…</source>
        <translation>إضافة &amp;عملات…</translation>
    </message>
    <message>
        <source>Copy all &amp;lines</source>
        <translation>نسخ كل الأ&amp;سطر</translation>
    </message>
    <message>
        <source>&amp;Refresh rates</source>
        <translation>تح&amp;ديث الأسعار</translation>
    </message>
    <message>
        <source>Show &amp;Today</source>
        <translation>عرض الي&amp;وم</translation>
    </message>
    <message>
        <source>S&amp;ettings…</source>
        <translation>الإ&amp;عدادات…</translation>
    </message>
    <message>
        <source>A&amp;bout Fexora</source>
        <translation>&amp;حول Fexora</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>إن&amp;هاء</translation>
    </message>
    <message>
        <source>%1 was removed.</source>
        <translation>أُزيل %1.</translation>
    </message>
    <message>
        <source>Undo (Ctrl+Z)</source>
        <translation>تراجع (Ctrl+Z)</translation>
    </message>
    <message>
        <source>Today could not be started.</source>
        <translation>تعذّر تشغيل اليوم.</translation>
    </message>
    <message>
        <source>About Fexora</source>
        <translation>حول Fexora</translation>
    </message>
    <message>
        <source>Fexora %1

Converts an amount into every currency you chose, offline, and says how old its rates are.</source>
        <translation>Fexora %1

يحوّل مبلغًا إلى كل العملات المختارة دون اتصال، ويبيّن عمر الأسعار.</translation>
    </message>
    <message>
        <source>&amp;Convert from this</source>
        <translation>التحويل من ه&amp;ذه</translation>
    </message>
    <message>
        <source>Copy the &amp;number</source>
        <translation>نسخ ال&amp;عدد</translation>
    </message>
    <message>
        <source>Copy “%1”</source>
        <translation>نسخ «%1»</translation>
    </message>
    <message>
        <source>Copy &amp;all lines</source>
        <translation>نسخ &amp;كل الأسطر</translation>
    </message>
    <message>
        <source>Move &amp;up</source>
        <translation>إلى أ&amp;على</translation>
    </message>
    <message>
        <source>Move &amp;down</source>
        <translation>إلى أس&amp;فل</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>إ&amp;زالة</translation>
    </message>
    <message>
        <source>The store could not be read; it is left as it is.</source>
        <translation>تعذّرت قراءة المخزن؛ يبقى كما هو.</translation>
    </message>
    <message>
        <source>&amp;Find in the list</source>
        <translation>ب&amp;حث في القائمة</translation>
    </message>
    <message>
        <source>Nothing new is kept: the store cannot be written.</source>
        <translation>لا يُحفظ أي جديد: تعذّرت الكتابة في المخزن.</translation>
    </message>
    <message>
        <source>&amp;How the rate moved</source>
        <translation>ك&amp;يف تغيّر السعر</translation>
    </message>
    <message>
        <source>Rates of a &amp;day…</source>
        <translation>أسعار &amp;يوم…</translation>
    </message>
    <message>
        <source>No rates for that day are kept.</source>
        <translation>لا أسعار محفوظة لهذا اليوم.</translation>
    </message>
    <message>
        <source>Get the past (1 MB)</source>
        <translation>جلب الماضي (1 ميغابايت)</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>إيقاف</translation>
    </message>
</context>
<context>
    <name>Currency</name>
    <message>
        <source>withdrawn</source>
        <translation>سُحبت</translation>
    </message>
    <message>
        <source>replaced by %1</source>
        <translation>حلّت محلها %1</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::CurrencyPicker</name>
    <message>
        <source>Convert from</source>
        <translation>التحويل من</translation>
    </message>
    <message>
        <source>Add currencies</source>
        <translation>إضافة عملات</translation>
    </message>
    <message>
        <source>Code, name, sign or country</source>
        <translation>رمز أو اسم أو علامة أو بلد</translation>
    </message>
    <message>
        <source>Search currencies</source>
        <translation>البحث عن عملات</translation>
    </message>
    <message>
        <source>Currencies found</source>
        <translation>العملات الموجودة</translation>
    </message>
    <message>
        <source>A click or Ctrl+Return ticks several</source>
        <translation>النقر أو Ctrl+الإدخال يحدد عدة عملات</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>اختيار</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>إضافة</translation>
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
        <translation>اليوم (Esc)</translation>
    </message>
    <message>
        <source>Day of the rates</source>
        <translation>يوم الأسعار</translation>
    </message>
    <message>
        <source>Back to the newest rates</source>
        <translation>العودة إلى أحدث الأسعار</translation>
    </message>
    <message>
        <source>At the rates of %1</source>
        <translation>بأسعار %1</translation>
    </message>
    <message>
        <source>For %1: rates of %2</source>
        <translation>ليوم %1: أسعار %2</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>rates of a day, a source</comment>
        <translation>%1، %2</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::DayPicker</name>
    <message>
        <source>Rates of a day</source>
        <translation>أسعار يوم</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>عرض</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::FreshnessCaption</name>
    <message>
        <source>State of the refresh</source>
        <translation>حالة التحديث</translation>
    </message>
    <message>
        <source>Refreshing</source>
        <translation>يجري التحديث</translation>
    </message>
    <message>
        <source>,</source>
        <comment>before an age</comment>
        <translation>،</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>إيقاف</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>تحديث</translation>
    </message>
    <message>
        <source>Stop refreshing</source>
        <translation>إيقاف التحديث</translation>
    </message>
    <message>
        <source>Ask for fresh rates (F5)</source>
        <translation>طلب أسعار جديدة (F5)</translation>
    </message>
    <message>
        <source>Refreshing… %1 KB</source>
        <translation>يجري التحديث… %1 ك.ب</translation>
    </message>
    <message>
        <source>Refreshing… %1 of %2 KB</source>
        <translation>يجري التحديث… %1 من %2 ك.ب</translation>
    </message>
    <message>
        <source>State of the store</source>
        <translation>حالة المخزن</translation>
    </message>
</context>
<context>
    <name>FreshnessWords</name>
    <message>
        <source>today, %1</source>
        <translation>اليوم، %1</translation>
    </message>
    <message>
        <source>d MMMM</source>
        <comment>a day of this year</comment>
        <translation>d MMMM</translation>
    </message>
    <message>
        <source>d MMMM yyyy</source>
        <comment>a day</comment>
        <translation>d MMMM yyyy</translation>
    </message>
    <message>
        <source>dated in the future</source>
        <translation>تاريخها في المستقبل</translation>
    </message>
    <message numerus="yes">
        <source>%Ln minute(s) old</source>
        <translation>
            <numerusform>قبل أقل من دقيقة</numerusform>
            <numerusform>قبل دقيقة</numerusform>
            <numerusform>قبل دقيقتين</numerusform>
            <numerusform>قبل %Ln دقائق</numerusform>
            <numerusform>قبل %Ln دقيقة</numerusform>
            <numerusform>قبل %Ln دقيقة</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln hour(s) old</source>
        <translation>
            <numerusform>قبل أقل من ساعة</numerusform>
            <numerusform>قبل ساعة</numerusform>
            <numerusform>قبل ساعتين</numerusform>
            <numerusform>قبل %Ln ساعات</numerusform>
            <numerusform>قبل %Ln ساعة</numerusform>
            <numerusform>قبل %Ln ساعة</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln day(s) old</source>
        <translation>
            <numerusform>اليوم</numerusform>
            <numerusform>قبل يوم</numerusform>
            <numerusform>قبل يومين</numerusform>
            <numerusform>قبل %Ln أيام</numerusform>
            <numerusform>قبل %Ln يومًا</numerusform>
            <numerusform>قبل %Ln يوم</numerusform>
        </translation>
    </message>
    <message>
        <source>bundled</source>
        <translation>مرفقة</translation>
    </message>
    <message>
        <source>from a file</source>
        <translation>من ملف</translation>
    </message>
    <message>
        <source>No rates yet</source>
        <translation>لا أسعار بعد</translation>
    </message>
    <message>
        <source>an unknown day</source>
        <translation>يوم غير معروف</translation>
    </message>
    <message>
        <source>Rates of %1</source>
        <translation>أسعار %1</translation>
    </message>
    <message>
        <source>Rates stored %1</source>
        <translation>أسعار حُفظت %1</translation>
    </message>
    <message>
        <source>, </source>
        <comment>between parts</comment>
        <translation>، </translation>
    </message>
    <message>
        <source>today</source>
        <translation>اليوم</translation>
    </message>
    <message>
        <source>less than a minute old</source>
        <translation>قبل أقل من دقيقة</translation>
    </message>
    <message>
        <source>rate of %1</source>
        <translation>سعر %1</translation>
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
        <translation>لم تُحفظ الأسعار لوقت لاحق: %1</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::LinesFilter</name>
    <message>
        <source>Find in the list</source>
        <translation>بحث في القائمة</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::LinesModel</name>
    <message>
        <source>%1, %2</source>
        <translation>%1، %2</translation>
    </message>
    <message>
        <source>no rate</source>
        <translation>لا سعر</translation>
    </message>
    <message>
        <source>too large a number</source>
        <translation>عدد كبير جدًا</translation>
    </message>
    <message>
        <source>no rate for that day</source>
        <translation>لا سعر لهذا اليوم</translation>
    </message>
    <message>
        <source>rate of %1</source>
        <translation>سعر %1</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a rate&apos;s day, a source</comment>
        <translation>%1، %2</translation>
    </message>
    <message>
        <source>as printed</source>
        <translation>كما نُشر</translation>
    </message>
    <message>
        <source>from two printed ones</source>
        <translation>من سعرين منشورين</translation>
    </message>
    <message>
        <source>by a fixed ratio</source>
        <translation>بنسبة ثابتة</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::NoticeBar</name>
    <message>
        <source>Put away</source>
        <translation>إخفاء</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>رسالة</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::PastImport</name>
    <message>
        <source>Getting the past…</source>
        <translation>جارٍ جلب الماضي…</translation>
    </message>
    <message>
        <source>Getting the past… %1 KB</source>
        <translation>جارٍ جلب الماضي… %1 كيلوبايت</translation>
    </message>
    <message>
        <source>Getting the past… %1 of %2 KB</source>
        <translation>جارٍ جلب الماضي… %1 من %2 كيلوبايت</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::PickerModel</name>
    <message>
        <source>%1, ticked</source>
        <translation>%1، محددة</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::PlotPanel</name>
    <message>
        <source>%1 days</source>
        <translation>%1 يومًا</translation>
    </message>
    <message>
        <source>1 year</source>
        <translation>سنة</translation>
    </message>
    <message>
        <source>%1 years</source>
        <translation>%1 سنوات</translation>
    </message>
    <message>
        <source>All</source>
        <translation>الكل</translation>
    </message>
    <message>
        <source>Change from the first day to the last</source>
        <translation>التغيّر من أول يوم إلى آخر يوم</translation>
    </message>
    <message>
        <source>Getting the past</source>
        <translation>جلب الماضي</translation>
    </message>
    <message>
        <source>%1; dotted where unknown</source>
        <comment>a source</comment>
        <translation>%1؛ منقّط حيث لا سعر معروف</translation>
    </message>
    <message>
        <source>%1, %2 to %3</source>
        <comment>a source of rates, first and last day</comment>
        <translation>%1، من %2 إلى %3</translation>
    </message>
    <message>
        <source>No past rates of this pair are known.</source>
        <translation>لا تُعرف أسعار سابقة لهذا الزوج.</translation>
    </message>
    <message>
        <source>Only the rate of %1 is known.</source>
        <translation>لا يُعرف إلا سعر %1.</translation>
    </message>
    <message>
        <source>Each refresh adds a day.</source>
        <translation>يضيف كل تحديث يومًا.</translation>
    </message>
    <message>
        <source>Each refresh adds a day. The European Central Bank publishes its rates since 1999, some 40 currencies.</source>
        <translation>يضيف كل تحديث يومًا. ينشر البنك المركزي الأوروبي أسعاره منذ 1999، لنحو 40 عملة.</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>إيقاف</translation>
    </message>
    <message>
        <source>Get them (1 MB)</source>
        <translation>جلبها (1 ميغابايت)</translation>
    </message>
    <message>
        <source>Since 1999…</source>
        <translation>منذ 1999…</translation>
    </message>
    <message>
        <source>Get the rates of the European Central Bank (1 MB)</source>
        <translation>جلب أسعار البنك المركزي الأوروبي (1 ميغابايت)</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::RatePlot</name>
    <message>
        <source>%1, %2</source>
        <comment>a rate and its day</comment>
        <translation>%1، %2</translation>
    </message>
    <message>
        <source>first %1; lowest %2; highest %3; last %4</source>
        <translation>الأول %1؛ الأدنى %2؛ الأعلى %3؛ الأخير %4</translation>
    </message>
    <message>
        <source>ddd d MMMM yyyy</source>
        <comment>a day with its weekday</comment>
        <translation>dddd d MMMM yyyy</translation>
    </message>
    <message>
        <source>d MMM</source>
        <comment>a day on an axis</comment>
        <translation>d MMM</translation>
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
        <translation>كيف تغيّر السعر</translation>
    </message>
</context>
<context>
    <name>ResponseError</name>
    <message>
        <source>This computer cannot ask for rates right now.</source>
        <translation>لا يستطيع هذا الحاسوب طلب الأسعار الآن.</translation>
    </message>
    <message>
        <source>The rates service was not found. Is this computer online?</source>
        <translation>لم يُعثر على خدمة الأسعار. هل الحاسوب متصل؟</translation>
    </message>
    <message>
        <source>The rates service could not be reached.</source>
        <translation>تعذّر الوصول إلى خدمة الأسعار.</translation>
    </message>
    <message>
        <source>The rates service took too long to answer.</source>
        <translation>تأخرت خدمة الأسعار في الرد.</translation>
    </message>
    <message>
        <source>The answer was too large to be read.</source>
        <translation>كان الرد أكبر من أن يُقرأ.</translation>
    </message>
    <message>
        <source>The answer was not from a rates service. Does this network ask for a login?</source>
        <translation>لم يأت الرد من خدمة أسعار. هل تطلب هذه الشبكة تسجيل الدخول؟</translation>
    </message>
    <message>
        <source>there are none</source>
        <translation>لا يوجد أي سعر</translation>
    </message>
    <message>
        <source>the US dollar is missing</source>
        <translation>الدولار الأمريكي غير موجود</translation>
    </message>
    <message>
        <source>%1 moved from %2 to %3</source>
        <translation>انتقل %1 من %2 إلى %3</translation>
    </message>
    <message>
        <source>the check of the rates failed</source>
        <translation>تعذّر التحقق من الأسعار</translation>
    </message>
    <message>
        <source>The rates service has no rates right now (%1).</source>
        <translation>ليست لدى خدمة الأسعار أسعار الآن (%1).</translation>
    </message>
    <message>
        <source>The new rates look wrong and were not taken: %1.</source>
        <translation>تبدو الأسعار الجديدة خاطئة ولم تؤخذ: %1.</translation>
    </message>
    <message>
        <source>the rate of %1 is %3</source>
        <translation>سعر %1 هو %3</translation>
    </message>
    <message>
        <source>one US dollar is %3 US dollars</source>
        <translation>الدولار الأمريكي الواحد يساوي %3 دولار أمريكي</translation>
    </message>
    <message>
        <source>they are quoted against %1, not against the US dollar</source>
        <translation>هي مقابل %1 وليست مقابل الدولار الأمريكي</translation>
    </message>
    <message>
        <source>%1 is there twice, as %2 and as %3</source>
        <translation>‏%1 مذكور مرتين، %2 و %3</translation>
    </message>
    <message>
        <source>%3 of the %2 currencies leaped</source>
        <translation>قفزت %3 من العملات الـ %2</translation>
    </message>
    <message>
        <source>nearly all moved at once, by a factor of %3</source>
        <translation>تغيرت كلها تقريبا معا بمعامل %3</translation>
    </message>
    <message>
        <source>%1 is not there any more</source>
        <translation>لم يعد %1 موجودا</translation>
    </message>
    <message>
        <source>two sources contradict each other: %1 is %2 in one, %3 in the other</source>
        <translation>يتناقض مصدران: %1 هو %2 في أحدهما و %3 في الآخر</translation>
    </message>
    <message>
        <source>they are of the future, %3</source>
        <translation>تاريخها في المستقبل، %3</translation>
    </message>
    <message>
        <source>they are of %3, older than those of %2</source>
        <translation>هي من %3، أقدم من تلك التي من %2</translation>
    </message>
    <message>
        <source>The rates service could not prove who it is. Is this computer&apos;s clock right?</source>
        <translation>لم تستطع خدمة الأسعار إثبات هويتها. هل ساعة هذا الحاسوب صحيحة؟</translation>
    </message>
    <message>
        <source>Nobody is asked for rates: see the settings.</source>
        <translation>لا يسأل أحد عن الأسعار: راجع الإعدادات.</translation>
    </message>
    <message>
        <source>Left out of the new rates: %1.</source>
        <translation>استبعد من الأسعار الجديدة: %1.</translation>
    </message>
    <message>
        <source>A leap in the new rates: %1.</source>
        <translation>قفزة في الأسعار الجديدة: %1.</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::SettingsPage</name>
    <message>
        <source>&amp;Separate groups of digits</source>
        <translation>&amp;فصل مجموعات الأرقام</translation>
    </message>
    <message>
        <source>Light, or as the desktop</source>
        <translation>فاتح، أو كسطح المكتب</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>داكن</translation>
    </message>
    <message>
        <source>Names</source>
        <translation>الأسماء</translation>
    </message>
    <message>
        <source>Codes</source>
        <translation>الرموز</translation>
    </message>
    <message>
        <source>As in the converter</source>
        <translation>كما في المحوّل</translation>
    </message>
    <message>
        <source>The last amount</source>
        <translation>آخر مبلغ</translation>
    </message>
    <message>
        <source>Rates of one unit</source>
        <translation>أسعار الوحدة</translation>
    </message>
    <message>
        <source>&amp;Open at login</source>
        <translation>ال&amp;فتح عند تسجيل الدخول</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>الإعدادات</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>إغلاق</translation>
    </message>
    <message>
        <source>Both windows</source>
        <translation>النافذتان</translation>
    </message>
    <message>
        <source>&amp;Digits after the mark</source>
        <translation>ال&amp;خانات العشرية</translation>
    </message>
    <message>
        <source>&amp;Appearance</source>
        <translation>ال&amp;مظهر</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>اليوم</translation>
    </message>
    <message>
        <source>S&amp;hows</source>
        <translation>ي&amp;عرض</translation>
    </message>
    <message>
        <source>&amp;Unit of</source>
        <translation>&amp;وحدة</translation>
    </message>
    <message>
        <source>&amp;Currencies</source>
        <translation>ال&amp;عملات</translation>
    </message>
    <message>
        <source>&amp;Named by</source>
        <translation>ال&amp;تسمية</translation>
    </message>
    <message>
        <source>&amp;Lines at most</source>
        <translation>أقصى عدد للأ&amp;سطر</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>اختيار…</translation>
    </message>
    <message>
        <source>Currencies in Today</source>
        <translation>عملات اليوم</translation>
    </message>
    <message>
        <source>One unit of</source>
        <translation>وحدة من</translation>
    </message>
    <message>
        <source>Amounts, also in the terminal</source>
        <translation>المبالغ، وفي الطرفية أيضًا</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>تلقائي</translation>
    </message>
    <message>
        <source>exchange-api, daily</source>
        <translation>exchange-api، يوميا</translation>
    </message>
    <message>
        <source>European Central Bank</source>
        <translation>البنك المركزي الأوروبي</translation>
    </message>
    <message>
        <source>The rates service</source>
        <translation>خدمة الأسعار</translation>
    </message>
    <message>
        <source>Nowhere</source>
        <translation>لا مصدر</translation>
    </message>
    <message>
        <source>&amp;Fresh rates from</source>
        <translation>&amp;الأسعار الحديثة من</translation>
    </message>
    <message>
        <source>Draw how each rate &amp;moved</source>
        <translation>ا&amp;رسم كيف تغيّر كل سعر</translation>
    </message>
</context>
<context>
    <name>SourceWords</name>
    <message>
        <source>European Central Bank</source>
        <translation>البنك المركزي الأوروبي</translation>
    </message>
    <message>
        <source>The rates service</source>
        <translation>خدمة الأسعار</translation>
    </message>
    <message>
        <source>bundled</source>
        <translation>مرفقة</translation>
    </message>
    <message>
        <source>Daily tables in %1</source>
        <translation>جداول يومية بعملة %1</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::TodayModel</name>
    <message>
        <source>%1, %2</source>
        <translation>%1، %2</translation>
    </message>
    <message>
        <source>in %1</source>
        <translation>بعملة %1</translation>
    </message>
    <message>
        <source>in %1 days %2</source>
        <translation>خلال %1 يومًا %2</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::TodayWindow</name>
    <message>
        <source>Fexora Today</source>
        <translation>Fexora اليوم</translation>
    </message>
    <message>
        <source>Amounts</source>
        <translation>المبالغ</translation>
    </message>
    <message>
        <source>Converted amount</source>
        <translation>المبلغ المحوّل</translation>
    </message>
    <message>
        <source>Age of the rates</source>
        <translation>عمر الأسعار</translation>
    </message>
    <message>
        <source>rates ⇄</source>
        <translation>أسعار ⇄</translation>
    </message>
    <message>
        <source>Turn the rates around</source>
        <translation>عكس الأسعار</translation>
    </message>
    <message>
        <source>&amp;Open the converter</source>
        <translation>&amp;فتح المحوّل</translation>
    </message>
    <message>
        <source>&amp;Turn the rates around</source>
        <translation>&amp;عكس الأسعار</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>إ&amp;غلاق</translation>
    </message>
    <message>
        <source>The store could not be read.</source>
        <translation>تعذّرت قراءة المخزن.</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 يومًا</translation>
    </message>
</context>
</TS>
