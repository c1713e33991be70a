INSERT INTO meetings (id, title, start_time) VALUES (1, 'A', 'B');
DROP INDEX idx_meetings_folder;
ALTER TABLE meetings DROP COLUMN folder_id;
DROP TABLE dictations;
