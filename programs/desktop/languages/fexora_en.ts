<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>FreshnessWords</name>
    <message numerus="yes">
        <source>%n minute(s) old</source>
        <translation>
            <numerusform>%n minute old</numerusform>
            <numerusform>%n minutes old</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n hour(s) old</source>
        <translation>
            <numerusform>%n hour old</numerusform>
            <numerusform>%n hours old</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n day(s) old</source>
        <translation>
            <numerusform>%n day old</numerusform>
            <numerusform>%n days old</numerusform>
        </translation>
    </message>
</context>
</TS>
