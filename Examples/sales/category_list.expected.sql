-- Quantities sold in some categories; the list is put together from names that stand alone.
select p.category, p.name, sum(l.quantity) as sold
from product p
join order_line l on l.product_id = p.product_id
where p.category in ('tea', 'coffee')
group by p.category, p.name
order by p.category, p.name;
