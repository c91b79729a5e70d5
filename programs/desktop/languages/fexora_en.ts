<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>FreshnessWords</name>
    <message numerus="yes">
        <source>%Ln minute(s) old</source>
        <translation>
            <numerusform>%Ln minute old</numerusform>
            <numerusform>%Ln minutes old</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln hour(s) old</source>
        <translation>
            <numerusform>%Ln hour old</numerusform>
            <numerusform>%Ln hours old</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln day(s) old</source>
        <translation>
            <numerusform>%Ln day old</numerusform>
            <numerusform>%Ln days old</numerusform>
        </translation>
    </message>
</context>
</TS>
