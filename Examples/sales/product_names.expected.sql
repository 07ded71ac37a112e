-- Product names in the reader's language: the map says which column and which heading belong to the locale.
select p.product_id, p.name_de as "Warenname"
from product p
where p.category = 'tea'
order by 2;
