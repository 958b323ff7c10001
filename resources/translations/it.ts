<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it" sourcelanguage="it">
<context>
    <name>Texts</name>
    <message numerus="yes">
        <source>versioni</source>
        <translation>
            <numerusform>versione</numerusform>
            <numerusform>versioni</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n versioni</source>
        <translation>
            <numerusform>%n versione</numerusform>
            <numerusform>%n versioni</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 giorni</source>
        <translation>
            <numerusform>%1 giorni</numerusform>
            <numerusform>%1 giorni</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Completato, ma %n elementi non erano leggibili e le versioni vecchie restano: una di loro ha una data successiva a questo backup</source>
        <translation>
            <numerusform>Completato, ma %n elementi non erano leggibili e le versioni vecchie restano: una di loro ha una data successiva a questo backup</numerusform>
            <numerusform>Completato, ma %n elementi non erano leggibili e le versioni vecchie restano: una di loro ha una data successiva a questo backup</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Completato, ma %n elementi non erano leggibili</source>
        <translation>
            <numerusform>Completato, ma %n elementi non erano leggibili</numerusform>
            <numerusform>Completato, ma %n elementi non erano leggibili</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 ore</source>
        <translation>
            <numerusform>%1 ore</numerusform>
            <numerusform>%1 ore</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 di %2 file</source>
        <translation>
            <numerusform>%1 di %2 file</numerusform>
            <numerusform>%1 di %2 file</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Prossimo backup automatico entro %n ore.</source>
        <translation>
            <numerusform>Prossimo backup automatico entro un&apos;ora.</numerusform>
            <numerusform>Prossimo backup automatico entro %n ore.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Copie in %n luoghi</source>
        <translation>
            <numerusform>Copie in %n luoghi</numerusform>
            <numerusform>Copie in %n luoghi</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n da sistemare</source>
        <translation>
            <numerusform>%n da sistemare</numerusform>
            <numerusform>%n da sistemare</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Backup automatico ogni %n ore.</source>
        <translation>
            <numerusform>Backup automatico ogni ora.</numerusform>
            <numerusform>Backup automatico ogni %n ore.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Cresce di circa %1 al giorno. Lo spazio libero basta per circa %n giorni.</source>
        <translation>
            <numerusform>Cresce di circa %1 al giorno. Lo spazio libero basta per circa %n giorni.</numerusform>
            <numerusform>Cresce di circa %1 al giorno. Lo spazio libero basta per circa %n giorni.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Cresce di circa %1 al giorno. Lo spazio libero basta per circa %n mesi.</source>
        <translation>
            <numerusform>Cresce di circa %1 al giorno. Lo spazio libero basta per circa %n mesi.</numerusform>
            <numerusform>Cresce di circa %1 al giorno. Lo spazio libero basta per circa %n mesi.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Cresce di circa %1 al giorno. Lo spazio libero basta per circa %2 anni.</source>
        <translation>
            <numerusform>Cresce di circa %1 al giorno. Lo spazio libero basta per circa %2 anni.</numerusform>
            <numerusform>Cresce di circa %1 al giorno. Lo spazio libero basta per circa %2 anni.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n esclusioni non sono valide: finché ci sono, nessun backup riesce.</source>
        <translation>
            <numerusform>Un'esclusione non è valida: finché c'è, nessun backup riesce.</numerusform>
            <numerusform>%n esclusioni non sono valide: finché ci sono, nessun backup riesce.</numerusform>
        </translation>
    </message>
</context>
</TS>
