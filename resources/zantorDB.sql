-- The database that a new player starts with. The build makes zantorDB.db of it; the first run copies that and
-- brings it up to date, which adds the triggers' sound and gag columns, the aliases and three more games.

create table ZNTMacroGroup (
    oid integer not null primary key autoincrement,
    groupName text
);

create table ZNTMacro (
    oid integer not null primary key autoincrement,
    name text,
    dataToExecute text,
    zntMacroGroupFK integer
);
-- Partial, so that it finds a macro by its name but cannot serve the list of all names, which would then come in
-- the index's order instead of that in which they were made.
create index ZNTMacroByName on ZNTMacro (name) where name is not null;
create index ZNTMacroByGroup on ZNTMacro (zntMacroGroupFK);

create table ZNTTrigger (
    oid integer not null primary key autoincrement,
    name text,
    checkString text,
    action text,
    enabled integer
);

create table ZNTMudList (
    oid integer not null primary key autoincrement,
    name text,
    url text,
    telnetURL text,
    port integer,
    defaultConnection integer not null default 0,
    active integer not null default 1,
    userCreated integer not null default 1,
    displayToUser integer not null default 1
);

-- Long-lived public games where players who cannot see are at home. None is the default.
insert into ZNTMudList (name, url, telnetURL, port, userCreated) values
    ('Aardwolf', 'https://www.aardwolf.com', 'aardmud.org', 4000, 0),
    ('Achaea', 'https://www.achaea.com', 'achaea.com', 23, 0),
    ('Alter Aeon', 'https://www.alteraeon.com', 'alteraeon.com', 3000, 0),
    ('BatMUD', 'https://www.bat.org', 'batmud.bat.org', 23, 0),
    ('Cosmic Rage', 'https://www.cosmicrage.earth', 'cosmicrage.earth', 7777, 0),
    ('Discworld MUD', 'https://discworld.starturtle.net', 'discworld.starturtle.net', 4242, 0),
    ('Empire MUD', 'https://empiremud.net', 'empiremud.net', 4000, 0),
    ('Erion MUD', 'https://www.erionmud.com', 'erionmud.com', 1234, 0),
    ('MUME', 'https://mume.org', 'mume.org', 4242, 0),
    ('Realms of Despair', 'http://www.realmsofdespair.com', 'realmsofdespair.com', 4000, 0),
    ('Star Conquest', 'https://squidsoft.net', 'squidsoft.net', 7777, 0),
    ('Threshold RPG', 'https://www.thresholdrpg.com', 'thresholdrpg.com', 3333, 0),
    ('Unofficial SquareSoft MUD', 'https://uossmud.sandwich.net', 'uossmud.sandwich.net', 9000, 0);
