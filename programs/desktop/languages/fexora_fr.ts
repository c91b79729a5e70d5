<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>fexora::desktop::AmountField</name>
    <message>
        <source>Amount</source>
        <translation>Montant</translation>
    </message>
    <message>
        <source>Amount, or a calculation (Ctrl+L)</source>
        <translation>Montant ou calcul (Ctrl+L)</translation>
    </message>
    <message>
        <source>What was read</source>
        <translation>Ce qui a été lu</translation>
    </message>
    <message>
        <source>Source currency: %1</source>
        <translation>Devise de départ : %1</translation>
    </message>
    <message>
        <source>%1 – choose another (Ctrl+K)</source>
        <translation>%1 – en choisir une autre (Ctrl+K)</translation>
    </message>
    <message>
        <source>%1 instead (Alt+R)</source>
        <translation>plutôt %1 (Alt+R)</translation>
    </message>
    <message>
        <source>Read as %1</source>
        <translation>Lu comme %1</translation>
    </message>
</context>
<context>
    <name>AmountReading</name>
    <message>
        <source>A number is missing</source>
        <translation>Il manque un nombre</translation>
    </message>
    <message>
        <source>A parenthesis has no partner</source>
        <translation>Une parenthèse est seule</translation>
    </message>
    <message>
        <source>No day; write it like %1</source>
        <translation>Pas un jour ; par exemple %1</translation>
    </message>
    <message>
        <source>Divided by zero</source>
        <translation>Division par zéro</translation>
    </message>
    <message>
        <source>Too large a number</source>
        <translation>Nombre trop grand</translation>
    </message>
    <message>
        <source>No amount; write it like %1</source>
        <translation>Pas un montant ; par exemple %1</translation>
    </message>
    <message>
        <source>Not a currency: %1</source>
        <translation>Pas une devise : %1</translation>
    </message>
    <message>
        <source>Not a currency: %1; perhaps %2</source>
        <translation>Pas une devise : %1 ; peut-être %2</translation>
    </message>
    <message>
        <source>Two currencies in one calculation</source>
        <translation>Deux devises dans un seul calcul</translation>
    </message>
    <message>
        <source>“%1” was read as %2</source>
        <translation>« %1 » a été lu comme %2</translation>
    </message>
    <message>
        <source>%1: hundredths of %2</source>
        <translation>%1 : centièmes de %2</translation>
    </message>
    <message>
        <source>%1, in troy ounces</source>
        <translation>%1, en onces troy</translation>
    </message>
    <message>
        <source>That day is yet to come</source>
        <translation>Ce jour est encore à venir</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::ConverterWindow</name>
    <message>
        <source>Converted amounts</source>
        <translation>Montants convertis</translation>
    </message>
    <message>
        <source>+ Add currency</source>
        <translation>+ Ajouter une devise</translation>
    </message>
    <message>
        <source>Add currencies (Ctrl+F)</source>
        <translation>Ajouter des devises (Ctrl+F)</translation>
    </message>
    <message>
        <source>Swap with the first line</source>
        <translation>Échanger avec la première ligne</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menu</translation>
    </message>
    <message>
        <source>&amp;Amount</source>
        <translation>&amp;Montant</translation>
    </message>
    <message>
        <source>&amp;Other reading of the amount</source>
        <translation>&amp;Autre lecture du montant</translation>
    </message>
    <message>
        <source>Convert &amp;from…</source>
        <translation>Convertir &amp;depuis…</translation>
    </message>
    <message>
        <source>&amp;Swap with the first line</source>
        <translation>É&amp;changer avec la première ligne</translation>
    </message>
    <message>
        <source>Add &amp;currencies…</source>
        <translation>Ajouter des de&amp;vises…</translation>
    </message>
    <message>
        <source>Copy all &amp;lines</source>
        <translation>Copier toutes les &amp;lignes</translation>
    </message>
    <message>
        <source>&amp;Refresh rates</source>
        <translation>Actualise&amp;r les taux</translation>
    </message>
    <message>
        <source>Show &amp;Today</source>
        <translation>Afficher Au&amp;jourd’hui</translation>
    </message>
    <message>
        <source>S&amp;ettings…</source>
        <translation>Pa&amp;ramètres…</translation>
    </message>
    <message>
        <source>A&amp;bout Fexora</source>
        <translation>À &amp;propos de Fexora</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>%1 was removed.</source>
        <translation>%1 a été retiré.</translation>
    </message>
    <message>
        <source>Undo (Ctrl+Z)</source>
        <translation>Annuler (Ctrl+Z)</translation>
    </message>
    <message>
        <source>Today could not be started.</source>
        <translation>Aujourd’hui n’a pas pu être lancé.</translation>
    </message>
    <message>
        <source>About Fexora</source>
        <translation>À propos de Fexora</translation>
    </message>
    <message>
        <source>Fexora %1

Converts an amount into every currency you chose, offline, and says how old its rates are.</source>
        <translation>Fexora %1

Convertit un montant dans toutes les devises choisies, hors ligne, et dit l’âge de ses taux.</translation>
    </message>
    <message>
        <source>&amp;Convert from this</source>
        <translation>&amp;Convertir depuis celle-ci</translation>
    </message>
    <message>
        <source>Copy the &amp;number</source>
        <translation>Copier le &amp;nombre</translation>
    </message>
    <message>
        <source>Copy “%1”</source>
        <translation>Copier « %1 »</translation>
    </message>
    <message>
        <source>Copy &amp;all lines</source>
        <translation>Copier &amp;toutes les lignes</translation>
    </message>
    <message>
        <source>Move &amp;up</source>
        <translation>&amp;Monter</translation>
    </message>
    <message>
        <source>Move &amp;down</source>
        <translation>&amp;Descendre</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Retirer</translation>
    </message>
    <message>
        <source>The store could not be read; it is left as it is.</source>
        <translation>La lecture a échoué ; le fichier reste tel quel.</translation>
    </message>
    <message>
        <source>&amp;Find in the list</source>
        <translation>&amp;Rechercher dans la liste</translation>
    </message>
    <message>
        <source>Nothing new is kept: the store cannot be written.</source>
        <translation>Rien de nouveau n’est gardé : l’écriture est impossible.</translation>
    </message>
    <message>
        <source>&amp;How the rate moved</source>
        <translation>&amp;Évolution du cours</translation>
    </message>
    <message>
        <source>Rates of a &amp;day…</source>
        <translation>Cours d’un &amp;jour…</translation>
    </message>
    <message>
        <source>No rates for that day are kept.</source>
        <translation>Aucun cours n’est gardé pour ce jour.</translation>
    </message>
    <message>
        <source>Get the past (1 MB)</source>
        <translation>Récupérer le passé (1 Mo)</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
</context>
<context>
    <name>Currency</name>
    <message>
        <source>withdrawn</source>
        <translation>retirée</translation>
    </message>
    <message>
        <source>replaced by %1</source>
        <translation>remplacé par %1</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::CurrencyPicker</name>
    <message>
        <source>Convert from</source>
        <translation>Convertir depuis</translation>
    </message>
    <message>
        <source>Add currencies</source>
        <translation>Ajouter des devises</translation>
    </message>
    <message>
        <source>Code, name, sign or country</source>
        <translation>Code, nom, signe ou pays</translation>
    </message>
    <message>
        <source>Search currencies</source>
        <translation>Chercher des devises</translation>
    </message>
    <message>
        <source>Currencies found</source>
        <translation>Devises trouvées</translation>
    </message>
    <message>
        <source>A click or Ctrl+Return ticks several</source>
        <translation>Un clic ou Ctrl+Entrée en coche plusieurs</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Choisir</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Ajouter</translation>
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
        <translation>Aujourd’hui (Échap)</translation>
    </message>
    <message>
        <source>Day of the rates</source>
        <translation>Jour des cours</translation>
    </message>
    <message>
        <source>Back to the newest rates</source>
        <translation>Revenir aux cours les plus récents</translation>
    </message>
    <message>
        <source>At the rates of %1</source>
        <translation>Aux cours du %1</translation>
    </message>
    <message>
        <source>For %1: rates of %2</source>
        <translation>Pour le %1 : cours du %2</translation>
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
        <translation>Cours d’un jour</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Afficher</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::FreshnessCaption</name>
    <message>
        <source>State of the refresh</source>
        <translation>État de l’actualisation</translation>
    </message>
    <message>
        <source>Refreshing</source>
        <translation>Actualisation</translation>
    </message>
    <message>
        <source>,</source>
        <comment>before an age</comment>
        <translation>,</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>Actualiser</translation>
    </message>
    <message>
        <source>Stop refreshing</source>
        <translation>Arrêter l’actualisation</translation>
    </message>
    <message>
        <source>Ask for fresh rates (F5)</source>
        <translation>Demander de nouveaux taux (F5)</translation>
    </message>
    <message>
        <source>Refreshing… %1 KB</source>
        <translation>Actualisation… %1 Ko</translation>
    </message>
    <message>
        <source>Refreshing… %1 of %2 KB</source>
        <translation>Actualisation… %1 sur %2 Ko</translation>
    </message>
    <message>
        <source>State of the store</source>
        <translation>État du stockage</translation>
    </message>
</context>
<context>
    <name>FreshnessWords</name>
    <message>
        <source>today, %1</source>
        <translation>aujourd’hui, %1</translation>
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
        <translation>daté dans le futur</translation>
    </message>
    <message numerus="yes">
        <source>%Ln minute(s) old</source>
        <translation>
            <numerusform>il y a %Ln minute</numerusform>
            <numerusform>il y a %Ln minutes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln hour(s) old</source>
        <translation>
            <numerusform>il y a %Ln heure</numerusform>
            <numerusform>il y a %Ln heures</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln day(s) old</source>
        <translation>
            <numerusform>il y a %Ln jour</numerusform>
            <numerusform>il y a %Ln jours</numerusform>
        </translation>
    </message>
    <message>
        <source>bundled</source>
        <translation>fournis</translation>
    </message>
    <message>
        <source>from a file</source>
        <translation>d’un fichier</translation>
    </message>
    <message>
        <source>No rates yet</source>
        <translation>Pas encore de taux</translation>
    </message>
    <message>
        <source>an unknown day</source>
        <translation>un jour inconnu</translation>
    </message>
    <message>
        <source>Rates of %1</source>
        <translation>Taux : %1</translation>
    </message>
    <message>
        <source>Rates stored %1</source>
        <translation>Taux enregistrés : %1</translation>
    </message>
    <message>
        <source>, </source>
        <comment>between parts</comment>
        <translation>, </translation>
    </message>
    <message>
        <source>today</source>
        <translation>aujourd’hui</translation>
    </message>
    <message>
        <source>less than a minute old</source>
        <translation>il y a moins d’une minute</translation>
    </message>
    <message>
        <source>rate of %1</source>
        <translation>cours du %1</translation>
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
        <translation>Les cours ne sont pas gardés pour plus tard : %1</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::LinesFilter</name>
    <message>
        <source>Find in the list</source>
        <translation>Rechercher dans la liste</translation>
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
        <translation>pas de taux</translation>
    </message>
    <message>
        <source>too large a number</source>
        <translation>nombre trop grand</translation>
    </message>
    <message>
        <source>no rate for that day</source>
        <translation>aucun cours pour ce jour</translation>
    </message>
    <message>
        <source>rate of %1</source>
        <translation>cours du %1</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a rate&apos;s day, a source</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>as printed</source>
        <translation>tel que publié</translation>
    </message>
    <message>
        <source>from two printed ones</source>
        <translation>à partir de deux cours publiés</translation>
    </message>
    <message>
        <source>by a fixed ratio</source>
        <translation>par un rapport fixe</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::NoticeBar</name>
    <message>
        <source>Put away</source>
        <translation>Masquer</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::PastImport</name>
    <message>
        <source>Getting the past…</source>
        <translation>Récupération du passé…</translation>
    </message>
    <message>
        <source>Getting the past… %1 KB</source>
        <translation>Récupération du passé… %1 Ko</translation>
    </message>
    <message>
        <source>Getting the past… %1 of %2 KB</source>
        <translation>Récupération du passé… %1 sur %2 Ko</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::PickerModel</name>
    <message>
        <source>%1, ticked</source>
        <translation>%1, cochée</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::PlotPanel</name>
    <message>
        <source>%1 days</source>
        <translation>%1 jours</translation>
    </message>
    <message>
        <source>1 year</source>
        <translation>1 an</translation>
    </message>
    <message>
        <source>%1 years</source>
        <translation>%1 ans</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Tout</translation>
    </message>
    <message>
        <source>Change from the first day to the last</source>
        <translation>Variation du premier jour au dernier</translation>
    </message>
    <message>
        <source>Getting the past</source>
        <translation>Récupération du passé</translation>
    </message>
    <message>
        <source>%1; dotted where unknown</source>
        <comment>a source</comment>
        <translation>%1 ; pointillé où aucun n’est connu</translation>
    </message>
    <message>
        <source>%1, %2 to %3</source>
        <comment>a source of rates, first and last day</comment>
        <translation>%1, du %2 au %3</translation>
    </message>
    <message>
        <source>No past rates of this pair are known.</source>
        <translation>Aucun cours passé de cette paire n’est connu.</translation>
    </message>
    <message>
        <source>Only the rate of %1 is known.</source>
        <translation>Seul le cours du %1 est connu.</translation>
    </message>
    <message>
        <source>Each refresh adds a day.</source>
        <translation>Chaque actualisation ajoute un jour.</translation>
    </message>
    <message>
        <source>Each refresh adds a day. The European Central Bank publishes its rates since 1999, some 40 currencies.</source>
        <translation>Chaque actualisation ajoute un jour. La Banque centrale européenne publie ses cours depuis 1999, pour une quarantaine de devises.</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Get them (1 MB)</source>
        <translation>Les récupérer (1 Mo)</translation>
    </message>
    <message>
        <source>Since 1999…</source>
        <translation>Depuis 1999…</translation>
    </message>
    <message>
        <source>Get the rates of the European Central Bank (1 MB)</source>
        <translation>Récupérer les cours de la Banque centrale européenne (1 Mo)</translation>
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
        <translation>premier %1 ; plus bas %2 ; plus haut %3 ; dernier %4</translation>
    </message>
    <message>
        <source>ddd d MMMM yyyy</source>
        <comment>a day with its weekday</comment>
        <translation>ddd d MMMM yyyy</translation>
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
        <translation>Évolution du cours</translation>
    </message>
</context>
<context>
    <name>ResponseError</name>
    <message>
        <source>This computer cannot ask for rates right now.</source>
        <translation>Cet ordinateur ne peut pas demander de taux pour l’instant.</translation>
    </message>
    <message>
        <source>The rates service was not found. Is this computer online?</source>
        <translation>Le service des taux est introuvable. Cet ordinateur est-il en ligne ?</translation>
    </message>
    <message>
        <source>The rates service could not be reached.</source>
        <translation>Le service des taux n’a pas pu être joint.</translation>
    </message>
    <message>
        <source>The rates service took too long to answer.</source>
        <translation>Le service des taux a mis trop de temps.</translation>
    </message>
    <message>
        <source>The answer was too large to be read.</source>
        <translation>La réponse était trop grande.</translation>
    </message>
    <message>
        <source>The answer was not from a rates service. Does this network ask for a login?</source>
        <translation>La réponse ne vient pas d’un service de taux. Ce réseau demande-t-il une connexion ?</translation>
    </message>
    <message>
        <source>there are none</source>
        <translation>il n’y en a aucun</translation>
    </message>
    <message>
        <source>the US dollar is missing</source>
        <translation>le dollar américain manque</translation>
    </message>
    <message>
        <source>%1 moved from %2 to %3</source>
        <translation>%1 est passé de %2 à %3</translation>
    </message>
    <message>
        <source>the check of the rates failed</source>
        <translation>la vérification des taux a échoué</translation>
    </message>
    <message>
        <source>The rates service has no rates right now (%1).</source>
        <translation>Le service des taux n’a pas de taux pour l’instant (%1).</translation>
    </message>
    <message>
        <source>The new rates look wrong and were not taken: %1.</source>
        <translation>Les nouveaux taux semblent faux et n’ont pas été repris : %1.</translation>
    </message>
    <message>
        <source>the rate of %1 is %3</source>
        <translation>le cours de %1 est %3</translation>
    </message>
    <message>
        <source>one US dollar is %3 US dollars</source>
        <translation>un dollar américain vaut %3 dollars américains</translation>
    </message>
    <message>
        <source>they are quoted against %1, not against the US dollar</source>
        <translation>ils sont exprimés par %1 et non par dollar américain</translation>
    </message>
    <message>
        <source>%1 is there twice, as %2 and as %3</source>
        <translation>%1 y figure deux fois, avec %2 et avec %3</translation>
    </message>
    <message>
        <source>%3 of the %2 currencies leaped</source>
        <translation>%3 des %2 devises ont fait un saut</translation>
    </message>
    <message>
        <source>nearly all moved at once, by a factor of %3</source>
        <translation>presque tous ont changé à la fois, d’un facteur %3</translation>
    </message>
    <message>
        <source>%1 is not there any more</source>
        <translation>%1 n’y figure plus</translation>
    </message>
    <message>
        <source>two sources contradict each other: %1 is %2 in one, %3 in the other</source>
        <translation>deux sources se contredisent : %1 vaut %2 dans l’une, %3 dans l’autre</translation>
    </message>
    <message>
        <source>they are of the future, %3</source>
        <translation>ils sont du futur, du %3</translation>
    </message>
    <message>
        <source>they are of %3, older than those of %2</source>
        <translation>ils sont du %3, plus anciens que ceux du %2</translation>
    </message>
    <message>
        <source>The rates service could not prove who it is. Is this computer&apos;s clock right?</source>
        <translation>Le service de cours n’a pas pu prouver son identité. L’horloge de cet ordinateur est-elle à l’heure ?</translation>
    </message>
    <message>
        <source>Nobody is asked for rates: see the settings.</source>
        <translation>Les cours ne sont demandés à personne : voir les paramètres.</translation>
    </message>
    <message>
        <source>Left out of the new rates: %1.</source>
        <translation>Laissé de côté : %1.</translation>
    </message>
    <message>
        <source>A leap in the new rates: %1.</source>
        <translation>Un saut dans les nouveaux cours : %1.</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::SettingsPage</name>
    <message>
        <source>&amp;Separate groups of digits</source>
        <translation>&amp;Séparer les groupes de chiffres</translation>
    </message>
    <message>
        <source>Light, or as the desktop</source>
        <translation>Clair, ou comme le bureau</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Sombre</translation>
    </message>
    <message>
        <source>Names</source>
        <translation>Noms</translation>
    </message>
    <message>
        <source>Codes</source>
        <translation>Codes</translation>
    </message>
    <message>
        <source>As in the converter</source>
        <translation>Comme dans le convertisseur</translation>
    </message>
    <message>
        <source>The last amount</source>
        <translation>Le dernier montant</translation>
    </message>
    <message>
        <source>Rates of one unit</source>
        <translation>Taux d’une unité</translation>
    </message>
    <message>
        <source>&amp;Open at login</source>
        <translation>&amp;Ouvrir à la connexion</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Both windows</source>
        <translation>Les deux fenêtres</translation>
    </message>
    <message>
        <source>&amp;Digits after the mark</source>
        <translation>&amp;Décimales</translation>
    </message>
    <message>
        <source>&amp;Appearance</source>
        <translation>&amp;Apparence</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Aujourd’hui</translation>
    </message>
    <message>
        <source>S&amp;hows</source>
        <translation>A&amp;ffiche</translation>
    </message>
    <message>
        <source>&amp;Unit of</source>
        <translation>&amp;Unité de</translation>
    </message>
    <message>
        <source>&amp;Currencies</source>
        <translation>De&amp;vises</translation>
    </message>
    <message>
        <source>&amp;Named by</source>
        <translation>&amp;Nommées par</translation>
    </message>
    <message>
        <source>&amp;Lines at most</source>
        <translation>&amp;Lignes au plus</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Choisir…</translation>
    </message>
    <message>
        <source>Currencies in Today</source>
        <translation>Devises dans Aujourd’hui</translation>
    </message>
    <message>
        <source>One unit of</source>
        <translation>Une unité de</translation>
    </message>
    <message>
        <source>Amounts, also in the terminal</source>
        <translation>Montants, aussi dans le terminal</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatique</translation>
    </message>
    <message>
        <source>exchange-api, daily</source>
        <translation>exchange-api, chaque jour</translation>
    </message>
    <message>
        <source>European Central Bank</source>
        <translation>Banque centrale européenne</translation>
    </message>
    <message>
        <source>The rates service</source>
        <translation>Le service de cours</translation>
    </message>
    <message>
        <source>Nowhere</source>
        <translation>Nulle part</translation>
    </message>
    <message>
        <source>&amp;Fresh rates from</source>
        <translation>&amp;Cours récents de</translation>
    </message>
    <message>
        <source>Draw how each rate &amp;moved</source>
        <translation>&amp;Dessiner l’évolution des cours</translation>
    </message>
</context>
<context>
    <name>SourceWords</name>
    <message>
        <source>European Central Bank</source>
        <translation>Banque centrale européenne</translation>
    </message>
    <message>
        <source>The rates service</source>
        <translation>Le service de cours</translation>
    </message>
    <message>
        <source>bundled</source>
        <translation>fournis</translation>
    </message>
    <message>
        <source>Daily tables in %1</source>
        <translation>Tableaux quotidiens en %1</translation>
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
        <translation>en %1</translation>
    </message>
    <message>
        <source>in %1 days %2</source>
        <translation>en %1 jours %2</translation>
    </message>
</context>
<context>
    <name>fexora::desktop::TodayWindow</name>
    <message>
        <source>Fexora Today</source>
        <translation>Fexora Aujourd’hui</translation>
    </message>
    <message>
        <source>Amounts</source>
        <translation>Montants</translation>
    </message>
    <message>
        <source>Converted amount</source>
        <translation>Montant converti</translation>
    </message>
    <message>
        <source>Age of the rates</source>
        <translation>Âge des taux</translation>
    </message>
    <message>
        <source>rates ⇄</source>
        <translation>taux ⇄</translation>
    </message>
    <message>
        <source>Turn the rates around</source>
        <translation>Inverser les taux</translation>
    </message>
    <message>
        <source>&amp;Open the converter</source>
        <translation>&amp;Ouvrir le convertisseur</translation>
    </message>
    <message>
        <source>&amp;Turn the rates around</source>
        <translation>&amp;Inverser les taux</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Fermer</translation>
    </message>
    <message>
        <source>The store could not be read.</source>
        <translation>La lecture a échoué.</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 jours</translation>
    </message>
</context>
</TS>
