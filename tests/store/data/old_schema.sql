-- A main database as an older station left it: without the columns and tables that the
-- start-up upgrade adds (settings live switches and backup columns, panel fire and loop
-- columns, the time-group weekday hours, the visitor plate, the record zones, the import
-- staging tables). {COUNTER} and {DATETIME} stand for the engine's row-key and date-time types.

CREATE TABLE "Users" (
    "Kayit No" {COUNTER},
    "ID" INTEGER,
    "Kart ID" BIGINT,
    "Adi" TEXT,
    "Soyadi" TEXT,
    "Kullanici Tipi" INTEGER,
    "Sifre" INTEGER,
    "Gecis Modu" INTEGER,
    "Grup No" INTEGER,
    "Grup Takvimi Aktif" INTEGER,
    "Grup Takvimi No" INTEGER,
    "Gecici Grup Aktif" INTEGER,
    "Gecici Grup No" INTEGER,
    "Gecici Grup Tarih" {DATETIME},
    "Gecici Grup Saat" {DATETIME},
    "Sirket No" INTEGER,
    "Departman No" INTEGER,
    "Blok No" INTEGER,
    "Daire" INTEGER,
    "Plaka" TEXT,
    "TCKimlik" TEXT,
    "Adres" TEXT,
    "Resim" TEXT,
    "Gunluk Gecis Onayi" INTEGER,
    "Tmp" TEXT
);
CREATE TABLE "Visitors" (
    "Kayit No" {COUNTER},
    "User ID" INTEGER,
    "Kart ID" BIGINT,
    "Adi" TEXT,
    "Soyadi" TEXT,
    "TCKimlik" TEXT,
    "Tarih" {DATETIME},
    "Saat" {DATETIME},
    "Ziyaret Sebebi" TEXT,
    "Grup No" INTEGER,
    "ID" INTEGER
);
CREATE TABLE "AccessDatas" (
    "Kayit No" {COUNTER},
    "Panel ID" INTEGER,
    "Kapi ID" INTEGER,
    "ID" INTEGER,
    "Kart ID" BIGINT,
    "Tarih" {DATETIME},
    "Gecis Tipi" INTEGER,
    "Kod" INTEGER,
    "Kullanici Tipi" INTEGER,
    "Visitor No" INTEGER
);
CREATE TABLE "GroupsMaster" (
    "Grup No" INTEGER,
    "Grup Adi" TEXT,
    "Gunluk Onay Gerekli" INTEGER,
    "Mukerrer Engelleme Gecersiz" INTEGER,
    "Lokal Kapasite Gecersiz" INTEGER,
    "Gece Icerdeki Kisi Sayisini Sil" INTEGER,
    "Antipassback Gecersiz" INTEGER,
    "Grup Gecis Sayisi" INTEGER,
    "Grup Gecis Sayisi Global Bolge No" INTEGER,
    "Grup Icerdeki Kisi Sayisi" INTEGER,
    "Grup Icerdeki Kisi Sayisi Global Bolge No" INTEGER,
    "Gunluk Aylik" INTEGER
);
CREATE TABLE "GroupsDetail" (
    "Kayit No" {COUNTER},
    "Grup No" INTEGER,
    "Grup Adi" TEXT,
    "Seri No" INTEGER,
    "Panel No" INTEGER,
    "Kapi1" INTEGER,
    "Kapi2" INTEGER,
    "Kapi3" INTEGER,
    "Kapi4" INTEGER,
    "Kapi1 Zaman Grup No" INTEGER,
    "Kapi2 Zaman Grup No" INTEGER,
    "Kapi3 Zaman Grup No" INTEGER,
    "Kapi4 Zaman Grup No" INTEGER,
    "Kapi1 Global Bolge No" INTEGER,
    "Kapi2 Global Bolge No" INTEGER,
    "Kapi3 Global Bolge No" INTEGER,
    "Kapi4 Global Bolge No" INTEGER
);
CREATE TABLE "PanelSettings" (
    "Sira No" INTEGER,
    "Panel ID" INTEGER,
    "Seri No" INTEGER,
    "Panel Adi" TEXT,
    "Panel Model" INTEGER,
    "Kontrol Modu" INTEGER,
    "Kart Sayisi" INTEGER,
    "Panel IP1" INTEGER,
    "Panel IP2" INTEGER,
    "Panel IP3" INTEGER,
    "Panel IP4" INTEGER,
    "Panel Subnet1" INTEGER,
    "Panel Subnet2" INTEGER,
    "Panel Subnet3" INTEGER,
    "Panel Subnet4" INTEGER,
    "Panel GW1" INTEGER,
    "Panel GW2" INTEGER,
    "Panel GW3" INTEGER,
    "Panel GW4" INTEGER,
    "Panel TCP Port" INTEGER,
    "Panel Remote IP1" INTEGER,
    "Panel Remote IP2" INTEGER,
    "Panel Remote IP3" INTEGER,
    "Panel Remote IP4" INTEGER,
    "Panel Remote TCP Port" INTEGER,
    "Panel M1 Role" INTEGER,
    "Panel M2 Role" INTEGER,
    "Panel M3 Role" INTEGER,
    "Panel M4 Role" INTEGER,
    "SingleUart" INTEGER,
    "Lokal APB" INTEGER,
    "Lokal APB2" INTEGER,
    "Global APB" INTEGER,
    "Global APB Grup" INTEGER,
    "Global Access Count Control" INTEGER,
    "Global MaxIn Count Control" INTEGER,
    "Global Capacity Control" INTEGER,
    "Panel Local Capacity" INTEGER,
    "Panel Local Capacity Value" INTEGER,
    "Panel Local Capacity Clear" INTEGER,
    "Panel Same Tag Block" INTEGER,
    "Panel Same Tag Block Type" INTEGER,
    "Panel Same Tag Block MinSec" INTEGER,
    "Status Data Update" INTEGER,
    "Status Data Update Type" INTEGER,
    "Status Data Update Time" INTEGER,
    "Buton Aktif" INTEGER,
    "Gecici Grup Aktif" INTEGER,
    "Kapi1 Aktif" INTEGER,
    "Kapi1 Adi" TEXT,
    "Kapi1 Role" INTEGER,
    "Kapi1 Calisma Modu" INTEGER,
    "Kapi1 Kapi Tipi" INTEGER,
    "Kapi1 Gecis Modu" INTEGER,
    "Kapi1 Modeli" INTEGER,
    "Kapi1 Role Secimi" INTEGER,
    "Kapi1 Role No" INTEGER,
    "Kapi2 Aktif" INTEGER,
    "Kapi2 Adi" TEXT,
    "Kapi2 Role" INTEGER,
    "Kapi2 Calisma Modu" INTEGER,
    "Kapi2 Kapi Tipi" INTEGER,
    "Kapi2 Gecis Modu" INTEGER,
    "Kapi2 Modeli" INTEGER,
    "Kapi2 Role Secimi" INTEGER,
    "Kapi2 Role No" INTEGER,
    "Kapi3 Aktif" INTEGER,
    "Kapi3 Adi" TEXT,
    "Kapi3 Role" INTEGER,
    "Kapi3 Calisma Modu" INTEGER,
    "Kapi3 Kapi Tipi" INTEGER,
    "Kapi3 Gecis Modu" INTEGER,
    "Kapi3 Modeli" INTEGER,
    "Kapi3 Role Secimi" INTEGER,
    "Kapi3 Role No" INTEGER,
    "Kapi4 Aktif" INTEGER,
    "Kapi4 Adi" TEXT,
    "Kapi4 Role" INTEGER,
    "Kapi4 Calisma Modu" INTEGER,
    "Kapi4 Kapi Tipi" INTEGER,
    "Kapi4 Gecis Modu" INTEGER,
    "Kapi4 Modeli" INTEGER,
    "Kapi4 Role Secimi" INTEGER,
    "Kapi4 Role No" INTEGER
);
CREATE TABLE "GlobalZones" (
    "Global Bolge No" INTEGER,
    "Global Bolge Adi" TEXT
);
CREATE TABLE "UsersAPB" (
    "ID" INTEGER,
    "Global Bolge No" INTEGER,
    "APB" INTEGER
);
CREATE TABLE "TimeGroups" (
    "Zaman Grup No" INTEGER,
    "Zaman Grup Adi" TEXT,
    "Gecis Sinirlama Tipi" INTEGER,
    "Baslangic Tarihi" {DATETIME},
    "Bitis Tarihi" {DATETIME},
    "Baslangic Saati" {DATETIME},
    "Bitis Saati" {DATETIME},
    "Pazartesi" INTEGER,
    "Sali" INTEGER,
    "Carsamba" INTEGER,
    "Persembe" INTEGER,
    "Cuma" INTEGER,
    "Cumartesi" INTEGER,
    "Pazar" INTEGER,
    "Gun1" INTEGER,
    "Gun2" INTEGER,
    "Gun3" INTEGER,
    "Gun4" INTEGER,
    "Gun5" INTEGER,
    "Gun6" INTEGER,
    "Gun7" INTEGER,
    "Gun8" INTEGER,
    "Gun9" INTEGER,
    "Gun10" INTEGER,
    "Gun11" INTEGER,
    "Gun12" INTEGER,
    "Gun13" INTEGER,
    "Gun14" INTEGER,
    "Gun15" INTEGER,
    "Gun16" INTEGER,
    "Gun17" INTEGER,
    "Gun18" INTEGER,
    "Gun19" INTEGER,
    "Gun20" INTEGER,
    "Gun21" INTEGER,
    "Gun22" INTEGER,
    "Gun23" INTEGER,
    "Gun24" INTEGER,
    "Gun25" INTEGER,
    "Gun26" INTEGER,
    "Gun27" INTEGER,
    "Gun28" INTEGER,
    "Gun29" INTEGER,
    "Gun30" INTEGER,
    "Gun31" INTEGER,
    "Baslangic Saati 1" {DATETIME},
    "Baslangic Saati 2" {DATETIME},
    "Baslangic Saati 3" {DATETIME},
    "Ek Saat" INTEGER,
    "Ilave Saat Kontrolu" INTEGER,
    "Ilave Baslangic Saati" {DATETIME},
    "Ilave Bitis Saati" {DATETIME}
);
CREATE TABLE "TimeZoneIDs" (
    "Kayit No" {COUNTER},
    "Gecis Sinirlama Tipi" INTEGER,
    "Adi" TEXT
);
CREATE TABLE "TimeZoneCalendar" (
    "Grup Takvimi No" INTEGER,
    "Grup Takvimi Adi" TEXT,
    "Grup Takvimi Tipi" INTEGER,
    "Grup No 1" INTEGER,
    "Grup No 2" INTEGER,
    "Grup No 3" INTEGER,
    "Tarih 1" {DATETIME},
    "Saat 1" {DATETIME},
    "Tarih 2" {DATETIME},
    "Saat 2" {DATETIME}
);
CREATE TABLE "ProgRelay2" (
    "Kayit No" {COUNTER},
    "Panel No" INTEGER,
    "Haftanin Gunu" INTEGER,
    "Zaman Dilimi" INTEGER,
    "Saat 1" {DATETIME},
    "Saat 2" {DATETIME},
    "Aktif" INTEGER,
    "Cihaz 1" INTEGER,
    "Cihaz 2" INTEGER,
    "Cihaz 3" INTEGER,
    "Cihaz 4" INTEGER,
    "Cihaz 5" INTEGER,
    "Cihaz 6" INTEGER,
    "Cihaz 7" INTEGER,
    "Cihaz 8" INTEGER,
    "Role 1" INTEGER,
    "Role 2" INTEGER,
    "Role 3" INTEGER,
    "Role 4" INTEGER,
    "Role 5" INTEGER,
    "Role 6" INTEGER,
    "Role 7" INTEGER,
    "Role 8" INTEGER
);
CREATE TABLE "Sirketler" (
    "Sirket No" INTEGER,
    "Adi" TEXT
);
CREATE TABLE "Departmanlar" (
    "Departman No" INTEGER,
    "Adi" TEXT
);
CREATE TABLE "Bloklar" (
    "Blok No" INTEGER,
    "Adi" TEXT
);
CREATE TABLE "UserTypes" (
    "Kullanici Tipi" INTEGER,
    "Adi" TEXT
);
CREATE TABLE "AccessModes" (
    "Gecis Modu" INTEGER,
    "Adi" TEXT
);
CREATE TABLE "CodeDefinition" (
    "TKod" INTEGER,
    "Operasyon" TEXT
);
CREATE TABLE "CodeOperation" (
    "TKod" INTEGER,
    "Operasyon" TEXT
);
CREATE TABLE "ProgInit" (
    "AdminPassword" BIGINT,
    "User Name 1" TEXT,
    "User Name 2" TEXT,
    "User Name 3" TEXT,
    "User Name 4" TEXT,
    "User Name 5" TEXT,
    "User Name 6" TEXT,
    "User Name 7" TEXT,
    "User Name 8" TEXT,
    "User Name 9" TEXT,
    "User Name 10" TEXT,
    "Password 1" BIGINT,
    "Password 2" BIGINT,
    "Password 3" BIGINT,
    "Password 4" BIGINT,
    "Password 5" BIGINT,
    "Password 6" BIGINT,
    "Password 7" BIGINT,
    "Password 8" BIGINT,
    "Password 9" BIGINT,
    "Password 10" BIGINT,
    "User Type 1" INTEGER,
    "User Type 2" INTEGER,
    "User Type 3" INTEGER,
    "User Type 4" INTEGER,
    "User Type 5" INTEGER,
    "User Type 6" INTEGER,
    "User Type 7" INTEGER,
    "User Type 8" INTEGER,
    "User Type 9" INTEGER,
    "User Type 10" INTEGER
);

INSERT INTO "Users" ("ID", "Kart ID", "Adi", "Soyadi", "Kullanici Tipi", "Sifre", "Gecis Modu", "Grup No", "Sirket No") VALUES (1, 1000001, 'Ahmet', 'Yılmaz', 0, 1234, 0, 1, 1);
INSERT INTO "Users" ("ID", "Kart ID", "Adi", "Soyadi", "Kullanici Tipi", "Sifre", "Gecis Modu", "Grup No", "Sirket No") VALUES (2, 1000002, 'Ayşe', 'O''Brien', 0, 0, 2, 1, 2);
INSERT INTO "Users" ("ID", "Kart ID", "Adi", "Soyadi", "Kullanici Tipi", "Sifre", "Gecis Modu", "Grup No", "Sirket No") VALUES (3, 4000000000, 'Ziyaretçi', 'Kartı 1', 1, 0, 0, 2, 0);
INSERT INTO "Visitors" ("User ID", "Kart ID", "Adi", "Soyadi", "Tarih", "Saat", "Ziyaret Sebebi", "Grup No", "ID") VALUES (3, 4000000000, 'Mehmet', 'Demir', '2016-03-14 00:00:00', '1899-12-30 09:30:00', 'Toplantı', 2, 1);
INSERT INTO "AccessDatas" ("Panel ID", "Kapi ID", "ID", "Kart ID", "Tarih", "Gecis Tipi", "Kod", "Kullanici Tipi", "Visitor No") VALUES (1, 1, 1, 1000001, '2016-03-14 08:01:02', 0, 1, 0, 0);
INSERT INTO "AccessDatas" ("Panel ID", "Kapi ID", "ID", "Kart ID", "Tarih", "Gecis Tipi", "Kod", "Kullanici Tipi", "Visitor No") VALUES (1, 2, 2, 1000002, '2016-03-14 17:45:00', 1, 0, 0, 0);
INSERT INTO "AccessDatas" ("Panel ID", "Kapi ID", "ID", "Kart ID", "Tarih", "Gecis Tipi", "Kod", "Kullanici Tipi", "Visitor No") VALUES (2, 1, 6, 0, '2016-03-15 12:00:00', 0, 6, 0, 0);
INSERT INTO "GroupsMaster" ("Grup No", "Grup Adi") VALUES (1, 'Merkez');
INSERT INTO "GroupsMaster" ("Grup No", "Grup Adi") VALUES (2, 'Ziyaretçi');
INSERT INTO "PanelSettings" ("Sira No", "Panel ID", "Seri No", "Panel Adi", "Panel IP1", "Panel IP2", "Panel IP3", "Panel IP4", "Panel TCP Port", "Kapi1 Aktif", "Kapi1 Adi") VALUES (1, 1, 4779, 'Giriş', 127, 0, 0, 1, 4001, 1, 'Ana Kapı');
INSERT INTO "TimeGroups" ("Zaman Grup No", "Zaman Grup Adi", "Gecis Sinirlama Tipi", "Pazartesi", "Ek Saat") VALUES (1, 'Mesai', 5, 1, 2);
INSERT INTO "TimeZoneIDs" ("Gecis Sinirlama Tipi", "Adi") VALUES (0, 'Sınırlama Yok');
INSERT INTO "TimeZoneIDs" ("Gecis Sinirlama Tipi", "Adi") VALUES (1, 'İki Tarih Arası Geçiş');
INSERT INTO "TimeZoneIDs" ("Gecis Sinirlama Tipi", "Adi") VALUES (5, 'Haftalık Plan');
INSERT INTO "Sirketler" ("Sirket No", "Adi") VALUES (1, 'Örnek A.Ş.');
INSERT INTO "CodeDefinition" ("TKod", "Operasyon") VALUES (0, 'Geçiş Reddedildi');
INSERT INTO "CodeDefinition" ("TKod", "Operasyon") VALUES (1, 'Geçiş Onaylandı');
INSERT INTO "ProgInit" ("AdminPassword", "User Name 1", "Password 1", "User Type 1", "User Name 2", "Password 2", "User Type 2") VALUES (1234, 'ali', 11, 0, 'veli', 22, 1);
