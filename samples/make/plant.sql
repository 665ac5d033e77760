-- The plant's database; plant.mjs makes the file from it.
CREATE TABLE kpi (Name TEXT NOT NULL, Value TEXT, Unit TEXT, Better TEXT, Worse TEXT, Note TEXT);
INSERT INTO kpi VALUES
  ('Overall effectiveness', '86.8', '%', '▲ 1.4', NULL, 'against last shift'),
  ('Good units', '14 206', 'pcs', '▲ 312', NULL, 'since 06:00'),
  ('Scrap rate', '1.9', '%', NULL, '▲ 0.3', 'limit 2.5 %'),
  ('Energy', '318', 'kWh', '▼ 12', NULL, 'this hour');

CREATE TABLE plant (
  Line TEXT PRIMARY KEY, Product TEXT, Rate INTEGER, Target INTEGER, OEE REAL, State TEXT,
  Light TEXT CHECK (Light IN ('Run', 'Slow', 'Halt'))
);
INSERT INTO plant VALUES
  ('Line 1', 'Cleaning concentrate 1 L', 412, 420, 97.2, 'Running', 'Run'),
  ('Line 2', 'Glass cleaner 500 ml', 388, 400, 94.8, 'Running', 'Run'),
  ('Line 3', 'Dish soap 750 ml', 251, 360, 71.4, 'Reduced speed', 'Slow'),
  ('Line 4', 'Hand soap 300 ml', 534, 520, 98.6, 'Running', 'Run'),
  ('Line 5', 'Fabric softener 2 L', 0, 240, 63.9, 'Film jam, unit 3', 'Halt'),
  ('Line 6', 'Refill pouch 400 ml', 296, 300, 95.1, 'Running', 'Run');

CREATE TABLE shift (Shift TEXT, Lead TEXT, DaysSafe INTEGER);
INSERT INTO shift VALUES ('Early shift', 'M. Okafor', 143);

-- What left the plant in each of the last hours, and what held it up this shift.
CREATE TABLE output (Id INTEGER PRIMARY KEY, Hour TEXT NOT NULL, Pallets INTEGER, Target INTEGER);
INSERT INTO output (Hour, Pallets, Target) VALUES
  ('02:00', 74, 78), ('03:00', 79, 78), ('04:00', 81, 78), ('05:00', 70, 78),
  ('06:00', 62, 78), ('07:00', 83, 78), ('08:00', 80, 78), ('09:00', 41, 78);

CREATE TABLE stops (Id INTEGER PRIMARY KEY, Cause TEXT NOT NULL, Minutes INTEGER);
INSERT INTO stops (Cause, Minutes) VALUES
  ('Change-over', 26), ('Film jam', 14), ('No material', 11), ('Cleaning', 8), ('Maintenance', 5);

CREATE VIEW totals AS SELECT (SELECT sum(Pallets) FROM output) AS Pallets, (SELECT sum(Minutes) FROM stops) AS Minutes;
