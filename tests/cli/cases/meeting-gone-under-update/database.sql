INSERT INTO meetings (id, title, start_time) VALUES (1, 'A', 'B');
CREATE TRIGGER gone AFTER UPDATE ON meetings BEGIN DELETE FROM meetings WHERE id = OLD.id; END;
